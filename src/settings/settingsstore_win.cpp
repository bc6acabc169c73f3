#include "settings/settingsstore.h"

#include "settings/channel.h"

#include <QCoreApplication>
#include <QSettings>

QString SettingsStore::storedKey(const QString& key)
{
    return key;
}

QStringList SettingsStore::channels()
{
    const QString application = QCoreApplication::applicationName();
    const QSettings organisation(QStringLiteral("HKEY_CURRENT_USER\\Software\\") + QCoreApplication::organizationName(),
                                 QSettings::NativeFormat);
    QStringList names;
    for (const QString& group : organisation.childGroups()) {
        if (group == application)
            names.append(QString());
        else if (group.startsWith(application + u'-') && Channel::isValidName(group.mid(application.size() + 1)))
            names.append(group.mid(application.size() + 1));
    }
    return names;
}
