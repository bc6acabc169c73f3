#include "station/controlserver.h"

#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "settings/settingstext.h"
#include "station/controlclient.h"
#include "station/station.h"

#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr int MaxPeers = 8;
constexpr auto PeerTimeout = 10s;

QJsonObject done(QJsonObject answer = {})
{
    answer.insert(QStringLiteral("ok"), true);
    return answer;
}

QJsonObject failure(const QString& text)
{
    return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), text}};
}

} // namespace

ControlServer::ControlServer(Station& station, QObject* parent) : QObject(parent), m_station(station)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    m_server.setMaxPendingConnections(MaxPeers);
    connect(&m_server, &QLocalServer::newConnection, this, &ControlServer::onNewConnection);
}

bool ControlServer::listen()
{
    const QString name = ControlClient::socketName(Channel::name());
    QLocalServer::removeServer(name);
    return m_server.listen(name);
}

void ControlServer::onNewConnection()
{
    while (QLocalSocket* peer = m_server.nextPendingConnection()) {
        connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
        if (m_server.findChildren<QLocalSocket*>().size() > MaxPeers) {
            peer->abort();
            continue;
        }
        peer->setReadBufferSize(ControlClient::MaxBytes + 1);
        connect(peer, &QLocalSocket::readyRead, this, [this, peer] { onReadyRead(peer); });
        QTimer::singleShot(PeerTimeout, peer, &QLocalSocket::abort);
    }
}

void ControlServer::onReadyRead(QLocalSocket* peer)
{
    if (!peer->canReadLine()) {
        if (peer->bytesAvailable() > ControlClient::MaxBytes)
            peer->abort();
        return;
    }
    const QJsonObject request = QJsonDocument::fromJson(peer->readLine(ControlClient::MaxBytes)).object();
    peer->write(QJsonDocument(answer(request)).toJson(QJsonDocument::Compact) + '\n');
    peer->disconnectFromServer();
}

QJsonObject ControlServer::answer(const QJsonObject& request)
{
    const QString command = request.value(QLatin1String("command")).toString();
    const auto recording = [this] {
        return QJsonObject{{QStringLiteral("recording"), m_station.recorder()->isRecording()}};
    };
    if (command == QLatin1String("status"))
        return done({{QStringLiteral("status"), m_station.status().toJson()}});
    if (command == QLatin1String("record")) {
        m_station.startRecording();
        return done(recording());
    }
    if (command == QLatin1String("stop")) {
        m_station.stopRecording();
        return done(recording());
    }
    if (command == QLatin1String("show")) {
        Q_EMIT showRequested();
        return done();
    }
    if (command == QLatin1String("exit")) {
        QTimer::singleShot(0, &m_station, &Station::exit); // once the answer is on its way
        return done();
    }
    if (command == QLatin1String("get"))
        return done({{QStringLiteral("values"), values()}});
    if (command == QLatin1String("set"))
        return setValues(request.value(QLatin1String("values")).toObject());
    return failure(QStringLiteral("There is no such command."));
}

QJsonObject ControlServer::values()
{
    QJsonObject object;
    for (const QString& key : SettingsText::keys()) {
        if (!SettingsText::isSecret(key))
            object.insert(key, SettingsText::value(AppSettings::instance(), key));
    }
    return object;
}

QJsonObject ControlServer::setValues(const QJsonObject& values)
{
    const bool wasRecording = m_station.recorder()->isRecording();
    const QString error = SettingsText::setValues(AppSettings::instance(), values);
    if (!error.isEmpty())
        return failure(error);
    m_station.applySettings(wasRecording);
    return done();
}
