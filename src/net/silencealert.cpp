#include "net/silencealert.h"

#include "net/smtpclient.h"
#include "settings/appsettings.h"

#include <utility>

namespace {

constexpr qint64 QuietSeconds = 15 * 60;

} // namespace

SilenceAlert::SilenceAlert(QObject* parent, std::function<QDateTime()> now) : QObject(parent), m_now(std::move(now)) {}

void SilenceAlert::send(const Event& event)
{
    const AppSettings& settings = AppSettings::instance();
    if (!settings.silenceNotify || settings.smtpHost.isEmpty() || settings.alertEmail.isEmpty())
        return;
    const QDateTime now = m_now();
    if (m_lastSent.isValid()) {
        // A clock that was put back must not keep the alerts quiet for longer.
        const qint64 passed = m_lastSent.secsTo(now);
        if (passed >= 0 && passed < QuietSeconds)
            return;
    }
    m_lastSent = now;

    Q_EMIT sending();
    auto* client = new SmtpClient(this);
    connect(client, &SmtpClient::finished, this, [this, client](bool success, const QString& message) {
        Q_EMIT logMessage(success ? tr("Silence notification sent")
                                  : tr("Silence notification failed: %1").arg(message));
        Q_EMIT finished(success, message);
        client->deleteLater();
    });
    const SmtpConfig config{settings.smtpHost, settings.smtpPort, settings.smtpUser,
                            settings.smtpPass, settings.smtpFrom, settings.smtpTls};
    client->send(config.completed(), settings.alertEmail, settings.alertSubject, body(event, now));
}

QString SilenceAlert::body(const Event& event, const QDateTime& now) const
{
    return tr("Tidewell detected silence on the recorded source.\n\nTime: %1\nSource: %2\nThreshold: %3 dB for %4 "
              "seconds\nCurrent file: %5\n")
        .arg(now.toString(Qt::ISODate), event.source, QString::number(AppSettings::instance().silenceThresholdDb),
             QString::number(event.seconds), event.file);
}
