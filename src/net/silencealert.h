#pragma once

#include <QDateTime>
#include <QObject>

#include <functional>

/// Mails the operator that the recorded source has gone silent, when the settings ask for it: at most once per quarter
/// of an hour, whether or not the mail went out.
class SilenceAlert : public QObject {
    Q_OBJECT
public:
    /// What the mail tells of the recording.
    struct Event {
        int seconds = 0; ///< length of the silence
        QString source; ///< description
        QString file; ///< path of the file being written
    };

    explicit SilenceAlert(
        QObject* parent = nullptr, std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    void send(const Event& event);

Q_SIGNALS:
    /// One line for the log: how a mail went.
    void logMessage(const QString& text);
    /// A mail is on its way; finished() follows.
    void sending();
    /// \param answer as SmtpClient::finished() gives it.
    void finished(bool sent, const QString& answer);

private:
    QString body(const Event& event, const QDateTime& now) const;

    std::function<QDateTime()> m_now;
    QDateTime m_lastSent; ///< invalid: never
};
