#include "settings/settingsstore.h"

#include "settings/channel.h"

#include <QCoreApplication>
#include <QSettings>

std::unique_ptr<QSettings> SettingsStore::open()
{
    return std::make_unique<QSettings>(QSettings::defaultFormat(), QSettings::UserScope,
                                       QCoreApplication::organizationName(), Channel::storeName());
}
