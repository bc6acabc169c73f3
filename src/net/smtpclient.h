#pragma once

#include "net/smtpdialogue.h"
#include "net/smtpreplyreader.h"

#include <QObject>
#include <QScopedPointer>
#include <QSslSocket>
#include <QString>
#include <QTimer>

#include <chrono>
#include <memory>

/// Sends one short plain-text mail to one recipient and says once how that went. Never blocks; a server that is silent
/// for 30 seconds ends the attempt, and one that talks without end does too.
class SmtpClient : public QObject {
    Q_OBJECT
public:
    /// \param replyTimeout for the connection, and for each command's final reply.
    explicit SmtpClient(QObject* parent = nullptr, std::chrono::milliseconds replyTimeout = std::chrono::seconds(30));
    /// Cuts the connection; an attempt that was under way reports nothing.
    ~SmtpClient() override;

    /// One at a time: another call starts over, and the attempt that it cuts off reports nothing. Control characters
    /// in addresses and the subject are left out. \param body text with LF line ends.
    void send(const SmtpConfig& config, const QString& to, const QString& subject, const QString& body);

Q_SIGNALS:
    /// Exactly once per send(), possibly before that returns. \param message a sentence for the operator, or the
    /// server's own reply line; never with the password. A slot may send() again, but deletes the client only later.
    void finished(bool success, const QString& message);

private Q_SLOTS:
    void onConnected();
    void onReadyRead();
    void onErrored();
    void onTimeout();

private:
    void openSocket();
    void onReply(const SmtpReply& reply);
    void finish(bool success, const QString& message);

    /// One per attempt; null when none is under way. It may be its own signal that ends it, hence deleted later.
    std::unique_ptr<QSslSocket, QScopedPointerDeleteLater> m_socket;
    QTimer m_replyTimer;
    SmtpConfig m_config;
    SmtpMail m_mail;
    SmtpDialogue::State m_state = SmtpDialogue::State::Finished;
    SmtpReplyReader m_replies;
};
