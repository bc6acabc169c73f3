#pragma once

#include <QObject>
#include <QSslSocket>
#include <QString>
#include <QTimer>

struct SmtpConfig {
    QString host;
    int port = 465;
    QString user;     ///< empty: no login
    QString password; ///< plain
    QString from;
    bool tls = true;  ///< from the first byte on port 465, by STARTTLS on any other
};

/// Sends one short plain-text mail to one recipient and says once how that went. Never blocks; a server that is silent
/// for 30 seconds ends the attempt.
class SmtpClient : public QObject {
    Q_OBJECT
public:
    explicit SmtpClient(QObject* parent = nullptr);
    ~SmtpClient() override;

    /// One at a time: another call starts over. \param body text with LF line ends.
    void send(const SmtpConfig& config, const QString& to, const QString& subject, const QString& body);

Q_SIGNALS:
    /// Exactly once per send(). \param message a sentence for the operator, or the server's own reply line.
    void finished(bool success, const QString& message);

private Q_SLOTS:
    void onConnected();
    void onReadyRead();
    void onErrored();
    void onTimeout();
};
