#include "settings/autostart.h"

#include "settings/autostartentry_linux.h"
#include "settings/channel.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcAutostart, "tidewell.settings")

void Autostart::setEnabled(bool enable)
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/autostart");
    const QString path = folder + u'/' + Channel::fileName() + QStringLiteral(".desktop");
    if (!enable) {
        QFile::remove(path);
        return;
    }
    QDir().mkpath(folder);
    QSaveFile file(path);
    const QByteArray entry =
        AutostartEntry::text(QCoreApplication::applicationFilePath(), Channel::displayName(), Channel::name());
    if (!file.open(QIODevice::WriteOnly) || file.write(entry) != entry.size() || !file.flush() || !file.commit())
        qCWarning(lcAutostart) << "Cannot write" << path << ":" << file.errorString();
}
