#include "settings/settingsstore.h"

#include "settings/channel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

// The store is an INI file in which the section "General" stands for keys without a group. A group of that name in
// lower case is written with an escape that the next process reads back as "General/...": only this spelling survives.
QString SettingsStore::storedKey(const QString& key)
{
    return key.startsWith(QLatin1String("general/")) ? u'G' + key.mid(1) : key;
}

QStringList SettingsStore::channels()
{
    const QString application = QCoreApplication::applicationName();
    const QDir folder = QFileInfo(open()->fileName()).dir();
    QStringList names;
    for (const QFileInfo& file : folder.entryInfoList({application + QStringLiteral("*.conf")}, QDir::Files)) {
        const QString name = file.completeBaseName().mid(application.size());
        if (name.isEmpty())
            names.append(name);
        else if (name.startsWith(u'-') && Channel::isValidName(name.mid(1)))
            names.append(name.mid(1));
    }
    return names;
}
