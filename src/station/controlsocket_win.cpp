#include "station/controlclient.h"

#include <QString>

// Pipes have one name space for all users of the computer.
QString ControlClient::socketName(const QString& channel)
{
    return QStringLiteral("tidewell-%1-%2").arg(qEnvironmentVariable("USERNAME"), channel);
}
