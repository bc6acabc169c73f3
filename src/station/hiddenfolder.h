#pragma once

#include <QString>

/// The folder in which the program keeps what belongs to the recordings but is no recording.
namespace HiddenFolder {
/// ".tidewell" in this recordings folder. Scans for recordings do not look into folders.
QString path(const QString& recordingsFolder);
/// Makes this folder unless it is there, hidden where a leading dot does not hide it. Its parent must exist: a drive
/// that is away must not be replaced by a folder. \return whether the folder exists now.
bool make(const QString& path);
} // namespace HiddenFolder
