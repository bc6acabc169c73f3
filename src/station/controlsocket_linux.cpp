#include "station/controlclient.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

namespace {

/// A folder that only this user can use. A process without a session, such as a cron job, has no XDG_RUNTIME_DIR but
/// must find the same one.
QString runtimeFolder()
{
    QString given = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!given.isEmpty())
        return given;
    QString session = QStringLiteral("/run/user/%1").arg(getuid());
    if (QFileInfo(session).ownerId() == getuid())
        return session;
    QString own = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    QDir().mkpath(own);
    return own;
}

} // namespace

QString ControlClient::socketName(const QString& channel)
{
    const QString suffix = channel.isEmpty() ? QString() : u'-' + channel;
    return runtimeFolder() + QStringLiteral("/tidewell%1.socket").arg(suffix);
}
