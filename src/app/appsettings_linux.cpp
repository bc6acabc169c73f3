#include "app/appsettings.h"

#include "app/autostartentry_linux.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcSettings, "tidewell.settings")

// The store is an INI file in which the section "General" stands for keys without a group. A group of that name in
// lower case is written with an escape that the next process reads back as "General/...": only this spelling survives.
QString AppSettings::storedKey(const QString& key)
{
    return key.startsWith(QLatin1String("general/")) ? u'G' + key.mid(1) : key;
}

void AppSettings::setStartWithSystem(bool enable)
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/autostart");
    const QString path = folder + QStringLiteral("/tidewell.desktop");
    if (!enable) {
        QFile::remove(path);
        return;
    }
    QDir().mkpath(folder);
    QSaveFile file(path);
    const QByteArray entry = AutostartEntry::text(QCoreApplication::applicationFilePath());
    if (!file.open(QIODevice::WriteOnly) || file.write(entry) != entry.size() || !file.flush() || !file.commit())
        qCWarning(lcSettings) << "Cannot write" << path << ":" << file.errorString();
}
