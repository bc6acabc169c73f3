#pragma once

#include <QByteArray>
#include <QString>

/// The desktop's autostart entry that starts this program at log-on.
namespace AutostartEntry {
/// Text of the entry; the path is quoted for the Exec key, so that blanks, quotes, dollars and percent signs survive.
/// \param name what the desktop shows. \param channel Channel::name(), which needs no quotes.
QByteArray text(const QString& executable, const QString& name = QStringLiteral("Tidewell"),
                const QString& channel = {});
} // namespace AutostartEntry
