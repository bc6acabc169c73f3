#pragma once

#include <QString>
#include <QStringList>

/// The channel that this process records. A machine may record several programmes: each by a process of its own, with
/// its own settings, default folder and lock. The first channel has no name; what belongs to it carries no suffix.
namespace Channel {
/// Longer names would not fit everywhere that a name becomes part of a path.
inline constexpr int MaxNameLength = 32;
/// 1 to MaxNameLength ASCII letters, digits, hyphens and underscores.
bool isValidName(const QString& name);

/// \param name valid, or empty for the first channel. To be called before the settings are used, once.
void setName(const QString& name);
/// Empty for the first channel.
QString name();
/// The channel's name for windows and the tray: "Tidewell", or "Tidewell - NAME".
QString displayName();
/// The text with "Tidewell" replaced by displayName(), for titles and tool tips.
QString named(QString text);
/// "Tidewell" or "Tidewell-NAME": the name of the channel's settings and data folder.
QString storeName();
/// "tidewell" or "tidewell-NAME": the name of the channel's lock, socket and autostart entry.
QString fileName();
/// The writable folder for the channel's own data, absolute, without a slash at its end. Not made by this.
QString dataFolder();
/// The channels of this user that have settings, sorted; the first channel is an empty name. The one that this process
/// records is among them.
QStringList all();
} // namespace Channel
