#include "station/controlclient.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QLocalSocket>

ControlClient::Reply ControlClient::ask(const QString& channel, const QJsonObject& request,
                                        std::chrono::milliseconds timeout)
{
    QDeadlineTimer left(timeout);
    const auto ms = [&left] { return int(left.remainingTime()); };
    QLocalSocket socket;
    socket.connectToServer(socketName(channel));
    if (!socket.waitForConnected(ms())) {
        // A crashed instance leaves its socket, where nobody accepts.
        const bool nobody = socket.error() == QLocalSocket::ServerNotFoundError ||
                            socket.error() == QLocalSocket::ConnectionRefusedError;
        return {nobody ? Reply::State::NotRunning : Reply::State::NoAnswer, {}};
    }
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!socket.canReadLine() && !left.hasExpired() && socket.bytesAvailable() <= MaxBytes) {
        if (!socket.waitForReadyRead(ms()))
            break;
    }
    const QJsonDocument answer = QJsonDocument::fromJson(socket.readLine(MaxBytes));
    return {answer.isObject() ? Reply::State::Answered : Reply::State::NoAnswer, answer.object()};
}
