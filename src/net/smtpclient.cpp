#include "net/smtpclient.h"

#include <QDateTime>
#include <QHostInfo>

using SmtpDialogue::State;

SmtpClient::SmtpClient(QObject* parent, std::chrono::milliseconds replyTimeout) : QObject(parent)
{
    m_replyTimer.setInterval(replyTimeout);
    connect(&m_replyTimer, &QTimer::timeout, this, &SmtpClient::onTimeout);
}

SmtpClient::~SmtpClient()
{
    if (m_socket)
        m_socket->disconnect(this);
}

void SmtpClient::openSocket()
{
    if (m_socket)
        m_socket->disconnect(this);
    m_socket.reset(new QSslSocket);
    connect(m_socket.get(), &QSslSocket::connected, this, &SmtpClient::onConnected);
    connect(m_socket.get(), &QSslSocket::encrypted, this, &SmtpClient::onConnected);
    connect(m_socket.get(), &QSslSocket::readyRead, this, &SmtpClient::onReadyRead);
    connect(m_socket.get(), &QSslSocket::errorOccurred, this, &SmtpClient::onErrored);
}

void SmtpClient::send(const SmtpConfig& config, const QString& to, const QString& subject, const QString& body)
{
    openSocket();
    m_replies = SmtpReplyReader();
    m_config = config;
    m_mail = {to, subject, body};
    m_state = State::Greeting;
    if (config.host.isEmpty() || to.isEmpty()) {
        finish(false, tr("SMTP server or recipient address is not configured."));
        return;
    }
    m_replyTimer.start();
    if (SmtpDialogue::implicitTls(config))
        m_socket->connectToHostEncrypted(config.host, quint16(config.port));
    else
        m_socket->connectToHost(config.host, quint16(config.port));
}

void SmtpClient::onConnected()
{
    m_replyTimer.start();
}

void SmtpClient::onReadyRead()
{
    const QSslSocket* const attempt = m_socket.get();
    m_replies.append(m_socket->readAll());
    while (const auto reply = m_replies.next()) {
        onReply(*reply);
        if (m_socket.get() != attempt) // it has ended, and perhaps another one has begun
            return;
    }
}

void SmtpClient::onReply(const SmtpReply& reply)
{
    const auto next = SmtpDialogue::next(m_state, reply.code, m_config, m_socket->isEncrypted());
    if (!next) {
        const QString line = m_state >= State::Password && !m_config.user.isEmpty()
                                 ? SmtpDialogue::withoutPassword(reply.line, m_config.password)
                                 : reply.line;
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
        const QSslSocket* const attempt = m_socket.get();
        m_socket->startClientEncryption();
        if (m_socket.get() != attempt)
            return;
    }
    // Only here, not by every line that comes: a reply without end shall end. Before the write, which may find that the
    // connection is lost.
    m_replyTimer.start();
    m_socket->write(
        SmtpDialogue::command(m_state, m_config, m_mail, QHostInfo::localHostName(), QDateTime::currentDateTime()) +
        "\r\n");
    if (m_socket)
        m_socket->flush();
}

void SmtpClient::onErrored()
{
    finish(false, m_socket->errorString());
}

void SmtpClient::onTimeout()
{
    finish(false, tr("The SMTP server did not respond in time."));
}

void SmtpClient::finish(bool success, const QString& message)
{
    m_state = State::Finished;
    m_replyTimer.stop();
    const auto socket = std::move(m_socket);
    socket->disconnect(this);
    if (success)
        socket->disconnectFromHost();
    else
        socket->abort();
    Q_EMIT finished(success, message);
}
