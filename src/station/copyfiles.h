#pragma once

#include <QString>

class QFileDevice;

/// What copying needs of the file system.
namespace CopyFiles {
/// Gives this file another name in the same file system, at once and whole; a file of the new name is never replaced.
/// \return whether that was done.
bool renameNew(const QString& from, const QString& to);
/// Asks the system to forget what it holds of this synced file in memory, so that it is read back from the disk. Where
/// that cannot be asked for, nothing happens.
void forgetCached(QFileDevice& file);
} // namespace CopyFiles
