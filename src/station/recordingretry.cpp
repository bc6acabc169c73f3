#include "station/recordingretry.h"

#include "engine/reasons.h"
#include "engine/recorder.h"

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto Interval = 5s;
constexpr qint64 AgainAtOnceMs = 30'000;

} // namespace

RecordingRetry::RecordingRetry(Recorder* recorder, std::function<RecordingWish()> wish, QObject* parent)
    : QObject(parent), m_recorder(recorder), m_wish(std::move(wish))
{
    m_timer.setInterval(Interval);
    connect(&m_timer, &QTimer::timeout, this, &RecordingRetry::attempt);
    connect(recorder, &Recorder::stopped, this, &RecordingRetry::onStopped);
}

void RecordingRetry::restart(const QString& reason)
{
    m_goesOn = true;
    if (!m_recorder->start(reason) && m_recorder->isWorthRetrying())
        setTrying(m_wish().wanted);
}

void RecordingRetry::cancel()
{
    m_goesOn = false;
    setTrying(false);
}

void RecordingRetry::onStopped(const QString& reason)
{
    if (!Reason::isError(reason) || !m_recorder->isWorthRetrying()) {
        cancel();
        return;
    }
    if (!m_recorder->hasHeard() && !m_goesOn)
        return; // an attempt of ours that failed late, or a start that never worked
    // Not at once again and again: a full disk refuses the first block of each attempt.
    const bool soon = !m_sinceEnd.isValid() || m_sinceEnd.hasExpired(AgainAtOnceMs);
    m_sinceEnd.start();
    setTrying(m_wish().wanted);
    if (m_trying && soon)
        QTimer::singleShot(0, this, &RecordingRetry::attempt); // those who hear of the end come first
}

void RecordingRetry::reconsider()
{
    if (m_trying && !m_wish().wanted)
        setTrying(false);
}

void RecordingRetry::attempt()
{
    if (!m_trying || m_recorder->isRecording())
        return;
    const RecordingWish wish = m_wish();
    const bool goesOn = wish.wanted && (m_recorder->start(wish.by) || m_recorder->isWorthRetrying());
    if (!goesOn)
        cancel();
}

void RecordingRetry::setTrying(bool trying)
{
    if (trying == m_trying)
        return;
    m_trying = trying;
    // In automatic mode the schedule makes the further attempts.
    if (trying && m_wish().by != QLatin1String(Reason::Scheduler))
        m_timer.start();
    else
        m_timer.stop();
    Q_EMIT changed();
}
