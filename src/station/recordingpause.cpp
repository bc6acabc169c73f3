#include "station/recordingpause.h"

#include <utility>

using namespace std::chrono_literals;

RecordingPause::RecordingPause(QObject* parent, std::function<QDateTime()> now) : QObject(parent), m_now(std::move(now))
{
    m_tick.setInterval(1s);
    connect(&m_tick, &QTimer::timeout, this, &RecordingPause::look);
}

QString RecordingPause::text() const
{
    if (!m_active)
        return {};
    return m_until.isValid() ? tr("Paused until %1").arg(m_until.toString(QStringLiteral("HH:mm")))
                             : tr("Paused until you start it");
}

void RecordingPause::begin(std::chrono::minutes length)
{
    m_active = true;
    m_length = length;
    m_until = length > 0min ? m_now().addMSecs(m_length.count()) : QDateTime();
    m_since.start();
    length > 0min ? m_tick.start() : m_tick.stop();
    Q_EMIT changed(true);
}

void RecordingPause::end()
{
    m_tick.stop();
    m_until = {};
    if (std::exchange(m_active, false))
        Q_EMIT changed(false);
}

void RecordingPause::look()
{
    if (m_until.isValid() && (m_now() >= m_until || m_since.hasExpired(m_length.count())))
        end();
}
