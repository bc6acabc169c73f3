#include "engine/schedulecontroller.h"

#include "engine/reasons.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto EvaluationInterval = 5s;

} // namespace

ScheduleController::ScheduleController(Recorder* recorder, QObject* parent, std::function<QDateTime()> now)
    : QObject(parent), m_recorder(recorder), m_now(std::move(now)), m_enabled(AppSettings::instance().autoMode)
{
    connect(&m_timer, &QTimer::timeout, this, &ScheduleController::evaluate);
    m_timer.start(EvaluationInterval);
}

void ScheduleController::setEnabled(bool on)
{
    if (on == m_enabled)
        return;
    m_enabled = on;
    m_evaluated = false;
    if (on) {
        Q_EMIT logMessage(tr("Scheduler enabled"));
        evaluate();
    } else {
        Q_EMIT logMessage(tr("Scheduler disabled"));
    }
}

void ScheduleController::setPaused(bool paused)
{
    m_paused = paused;
    if (!paused)
        forceEvaluate();
}

void ScheduleController::forceEvaluate()
{
    m_evaluated = false;
    evaluate();
}

void ScheduleController::evaluate()
{
    if (!m_enabled || m_paused || !m_recorder)
        return;
    const QDateTime now = m_now();
    const Schedule& schedule = AppSettings::instance().schedule;
    const bool wanted = schedule.isActive(now);
    const bool recording = m_recorder->isRecording();
    if (m_evaluated && wanted == m_lastWanted && wanted == recording)
        return;

    if (!wanted && recording) {
        m_recorder->stop(Reason::text(Reason::Scheduler));
    } else if (wanted && !recording) {
        if (const QDateTime end = schedule.blockEnd(now); end.isValid()) {
            const QString format = QStringLiteral("HH:mm");
            Q_EMIT logMessage(tr("Scheduled block %1 - %2").arg(now.toString(format), end.toString(format)));
        }
        m_recorder->start(Reason::text(Reason::Scheduler));
    }
    m_lastWanted = wanted;
    m_evaluated = true;
}
