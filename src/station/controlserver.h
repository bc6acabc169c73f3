#pragma once

#include <QJsonObject>
#include <QLocalServer>
#include <QObject>

class QLocalSocket;
class Station;

/// Lets other processes of this user ask and command a running station, as ControlClient describes. A peer that sends
/// too much or takes too long is cut off, and only a few are served at a time.
class ControlServer : public QObject {
    Q_OBJECT
public:
    explicit ControlServer(Station& station, QObject* parent = nullptr);

    /// Takes the channel's socket, even one that a crashed instance has left: the caller holds the channel's lock.
    /// \return false with the reason in errorString() when that could not be done.
    bool listen();
    QString errorString() const { return m_server.errorString(); }

    /// Carries out a request. \return what it is answered with.
    QJsonObject answer(const QJsonObject& request);

Q_SIGNALS:
    /// Another process asks for the window to come to the front.
    void showRequested();

private:
    void onNewConnection();
    void onReadyRead(QLocalSocket* peer);
    static QJsonObject values();
    QJsonObject setValues(const QJsonObject& values);

    Station& m_station;
    QLocalServer m_server;
};
