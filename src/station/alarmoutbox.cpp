#include "station/alarmoutbox.h"

#include "net/smtpclient.h"
#include "settings/appsettings.h"
#include "settings/channel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QSysInfo>

#include <algorithm>

namespace {

constexpr qint64 MailIntervalMs = 15 * 60'000;
constexpr qint64 WebIntervalMs = 60'000;
constexpr qint64 LargestFile = 1024 * 1024;
constexpr std::array<const char*, AlarmOutbox::WayCount> WayNames{"mail", "web"};

} // namespace

AlarmOutbox::AlarmOutbox(const QString& path, std::function<QJsonObject()> status, QObject* parent)
    : QObject(parent),
      m_path(path),
      m_status(std::move(status)),
      m_queues{AlarmQueue(MailIntervalMs), AlarmQueue(WebIntervalMs)},
      m_disk(this)
{
    load(path);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &AlarmOutbox::send);
    connect(&m_web, &WebRequest::finished, this, [this](const QString& error) { end(Web, error.isEmpty(), error); });
}

AlarmOutbox::~AlarmOutbox()
{
    m_disk.finish(std::chrono::seconds(2));
}

bool AlarmOutbox::isWanted(Way way) const
{
    const AppSettings& settings = AppSettings::instance();
    return way == Mail ? settings.alarmMail && !settings.smtpHost.isEmpty() && !settings.alertEmail.isEmpty()
                       : !settings.alarmUrl.isEmpty();
}

void AlarmOutbox::add(const Alarm& alarm)
{
    // That mail has a text, a subject and a limit of its own.
    const bool isMailedAlready =
        alarm.kind == AlarmKind::Silence && !alarm.isOver && AppSettings::instance().silenceNotify;
    for (const Way way : {Mail, Web}) {
        if (isWanted(way) && !(way == Mail && isMailedAlready))
            m_queues[way].add(alarm);
    }
    save();
    send();
}

void AlarmOutbox::send()
{
    const qint64 nowMs = QDateTime::currentMSecsSinceEpoch();
    for (const Way way : {Mail, Web}) {
        AlarmQueue& queue = m_queues[way];
        if (m_busy[way])
            continue;
        if (!isWanted(way)) {
            queue.clear();
            continue;
        }
        if (const qsizetype given = queue.dropExpired(nowMs); given > 0)
            Q_EMIT failed(tr("%n alarm(s) could not be sent for a day and are given up.", nullptr, int(given)));
        if (!queue.isEmpty() && queue.dueMs(nowMs) <= nowMs)
            begin(way);
    }
    plan();
}

void AlarmOutbox::begin(Way way)
{
    m_busy[way] = true;
    const QList<Alarm> alarms = m_queues[way].begin(QDateTime::currentMSecsSinceEpoch());
    m_inMessage[way] = int(alarms.size());
    save(); // the limit holds after a crash too
    way == Mail ? mail(alarms) : post(alarms);
}

void AlarmOutbox::mail(const QList<Alarm>& alarms)
{
    const AppSettings& settings = AppSettings::instance();
    const qsizetype dropped = m_queues[Mail].dropped();
    auto* client = new SmtpClient(this);
    connect(client, &SmtpClient::finished, this, [this, client](bool success, const QString& message) {
        client->deleteLater();
        end(Mail, success, message);
    });
    const SmtpConfig config{settings.smtpHost, settings.smtpPort, settings.smtpUser,
                            settings.smtpPass, settings.smtpFrom, settings.smtpTls};
    const QString subject =
        QStringLiteral("%1: %2").arg(Channel::named(tr("Tidewell")), AlarmQueue::title(alarms, dropped));
    client->send(config.completed(), settings.alertEmail, subject,
                 tr("This is Tidewell on the computer %1.").arg(QSysInfo::machineHostName()) + QStringLiteral("\n\n") +
                     AlarmQueue::text(alarms, dropped));
}

void AlarmOutbox::post(const QList<Alarm>& alarms)
{
    QJsonArray list;
    for (const Alarm& alarm : alarms)
        list.append(AlarmQueue::toJson(alarm));
    const QJsonObject message{{QStringLiteral("program"), QCoreApplication::applicationName()},
                              {QStringLiteral("host"), QSysInfo::machineHostName()},
                              {QStringLiteral("channel"), Channel::name()},
                              {QStringLiteral("text"), AlarmQueue::title(alarms, m_queues[Web].dropped())},
                              {QStringLiteral("dropped"), m_queues[Web].dropped()},
                              {QStringLiteral("alarms"), list},
                              {QStringLiteral("status"), m_status()}};
    m_web.post(AppSettings::instance().alarmUrl, QJsonDocument(message).toJson(QJsonDocument::Compact));
}

void AlarmOutbox::end(Way way, bool sent, const QString& answer)
{
    m_busy[way] = false;
    m_queues[way].end(sent);
    save();
    Q_EMIT finished(sent, QLatin1String(WayNames[way]), m_inMessage[way], answer);
    if (sent)
        Q_EMIT logMessage(way == Mail ? tr("%n alarm(s) sent by mail", nullptr, m_inMessage[way])
                                      : tr("%n alarm(s) sent to the web address", nullptr, m_inMessage[way]));
    else if (!m_failing[way])
        Q_EMIT failed(way == Mail
                          ? tr("An alarm could not be mailed and is tried again: %1").arg(answer)
                          : tr("An alarm could not be sent to the web address and is tried again: %1").arg(answer));
    m_failing[way] = !sent;
    plan();
}

/// Wakes up when the next message is due.
void AlarmOutbox::plan()
{
    const qint64 nowMs = QDateTime::currentMSecsSinceEpoch();
    qint64 waitMs = -1;
    for (const Way way : {Mail, Web}) {
        if (m_busy[way] || m_queues[way].isEmpty())
            continue;
        const qint64 due = std::clamp<qint64>(m_queues[way].dueMs(nowMs) - nowMs, 0, MailIntervalMs);
        waitMs = waitMs < 0 ? due : std::min(waitMs, due);
    }
    waitMs < 0 ? m_timer.stop() : m_timer.start(int(waitMs));
}

void AlarmOutbox::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    for (const Way way : {Mail, Web})
        m_queues[way].readJson(object.value(QLatin1String(WayNames[way])).toObject());
}

void AlarmOutbox::save()
{
    QJsonObject object;
    for (const Way way : {Mail, Web})
        object.insert(QLatin1String(WayNames[way]), m_queues[way].toJson());
    // No file before there is something to keep.
    if (std::all_of(m_queues.begin(), m_queues.end(), [](const AlarmQueue& queue) { return queue.isEmpty(); }) &&
        !QFileInfo::exists(m_path))
        return;
    m_disk.post([path = m_path, json = QJsonDocument(object).toJson(QJsonDocument::Compact)] {
        QDir().mkpath(QFileInfo(path).path());
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(json) == json.size())
            file.commit();
    });
}
