#pragma once

#include <QByteArray>
#include <QString>

/// The desktop's autostart entry that starts this program at log-on.
namespace AutostartEntry {
/// Text of the entry; the path is quoted for the Exec key, so that blanks, quotes, dollars and percent signs survive.
QByteArray text(const QString& executable);
} // namespace AutostartEntry
