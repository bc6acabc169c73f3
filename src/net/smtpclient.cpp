#include "net/smtpclient.h"

#include <QDateTime>
#include <QHostInfo>

using SmtpDialogue::State;

SmtpClient::SmtpClient(QObject* parent, std::chrono::milliseconds replyTimeout) : QObject(parent)
{
    m_replyTimer.setInterval(replyTimeout);
    connect(&m_replyTimer, &QTimer::timeout, this, &SmtpClient::onTimeout);
    connect(&m_socket, &QSslSocket::connected, this, &SmtpClient::onConnected);
    connect(&m_socket, &QSslSocket::encrypted, this, &SmtpClient::onConnected);
    connect(&m_socket, &QSslSocket::readyRead, this, &SmtpClient::onReadyRead);
    connect(&m_socket, &QSslSocket::errorOccurred, this, &SmtpClient::onErrored);
}

SmtpClient::~SmtpClient()
{
    m_socket.disconnect(this);
    m_socket.abort();
}

void SmtpClient::send(const SmtpConfig& config, const QString& to, const QString& subject, const QString& body)
{
    m_state = State::Finished; // of the attempt before, so that nothing its end still signals counts for this one
    m_socket.abort();
    m_replies = SmtpReplyReader();
    m_config = config;
    m_mail = {to, subject, body};
    m_state = State::Greeting;
    if (config.host.isEmpty() || to.isEmpty()) {
        finish(false, tr("SMTP server or recipient address is not configured."));
        return;
    }
    m_replyTimer.start();
    if (SmtpDialogue::tlsFromTheFirstByte(config))
        m_socket.connectToHostEncrypted(config.host, quint16(config.port));
    else
        m_socket.connectToHost(config.host, quint16(config.port));
}

void SmtpClient::onConnected()
{
    if (m_state != State::Finished)
        m_replyTimer.start();
}

void SmtpClient::onReadyRead()
{
    const QByteArray bytes = m_socket.readAll();
    if (m_state == State::Finished)
        return;
    m_replies.append(bytes);
    while (const auto reply = m_replies.next()) {
        onReply(*reply);
        if (m_state == State::Finished)
            return;
    }
}

void SmtpClient::onReply(const SmtpReply& reply)
{
    const auto next = SmtpDialogue::next(m_state, reply.code, m_config, m_socket.isEncrypted());
    if (!next) {
        const QString line =
            m_state >= State::Password ? SmtpDialogue::withoutPassword(reply.line, m_config.password) : reply.line;
        finish(false, m_state == State::Password ? tr("Authentication failed: %1").arg(line) : line);
        return;
    }
    if (*next == State::Finished) {
        finish(true, tr("Notification sent."));
        return;
    }
    m_state = *next;
    if (m_state == State::EhloOverTls) {
        // What came in the clear behind the reply may be anybody's (RFC 3207, 4.2).
        m_replies = SmtpReplyReader();
        m_socket.startClientEncryption();
        if (m_state == State::Finished)
            return;
    }
    m_socket.write(
        SmtpDialogue::command(m_state, m_config, m_mail, QHostInfo::localHostName(), QDateTime::currentDateTime()) +
        "\r\n");
    m_socket.flush();
    // Only here, not by every line that comes: a reply without end shall end.
    m_replyTimer.start();
}

void SmtpClient::onErrored()
{
    finish(false, m_socket.errorString());
}

void SmtpClient::onTimeout()
{
    finish(false, tr("The SMTP server did not respond in time."));
}

void SmtpClient::finish(bool success, const QString& message)
{
    if (m_state == State::Finished)
        return;
    m_state = State::Finished;
    m_replyTimer.stop();
    if (success)
        m_socket.disconnectFromHost();
    else
        m_socket.abort();
    Q_EMIT finished(success, message);
}
