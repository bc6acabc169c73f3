#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QSettings;

/// The platform's store for the settings of the current channel: the registry, or an INI file.
namespace SettingsStore {
std::unique_ptr<QSettings> open();
/// The name under which the platform's store keeps this key, so that another process finds it again.
QString storedKey(const QString& key);
/// The names of the channels of this user that have a store; an empty name is the first channel.
QStringList channels();
} // namespace SettingsStore
