#include "triggers/triggercontroller.h"

#include "engine/reasons.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "triggers/miditrigger.h"
#include "triggers/serialtrigger.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds ReopenInterval = 5s;
/// A source that is lost again before that was not back: each try would give two lines.
constexpr auto BackAfter = 2s;
/// Some drivers take seconds to refuse a port, such as one over Bluetooth. What waits for them is the recording too, so
/// that is at most this part of the time.
constexpr int ReopenTimePart = 20;

/// What a timer can hold, and more: three weeks.
constexpr int MaxHoldSeconds = 2'000'000;

} // namespace

TriggerSource* TriggerController::createSource(int kind, QObject* parent)
{
    switch (TriggerKind(kind)) {
    case TriggerKind::SerialLine:
        return new SerialTrigger(SerialTrigger::Mode::ControlLine, parent);
    case TriggerKind::SerialText:
        return new SerialTrigger(SerialTrigger::Mode::TextCommands, parent);
    case TriggerKind::Midi:
        return new MidiTrigger(parent);
    case TriggerKind::None:
        break;
    }
    return nullptr;
}

TriggerController::TriggerController(Recorder* recorder, QObject* parent, SourceFactory factory,
                                     std::function<QDateTime()> now)
    : QObject(parent), m_recorder(recorder), m_factory(std::move(factory)), m_now(std::move(now))
{
    m_hold.setSingleShot(true);
    m_hold.setTimerType(Qt::PreciseTimer); // a coarse one is up to 5 % early or late: 250 ms of 5 s
    m_reopen.setSingleShot(true);
    m_reopened.setSingleShot(true);
    connect(&m_reopen, &QTimer::timeout, this, &TriggerController::reopen);
    connect(&m_reopened, &QTimer::timeout, this, &TriggerController::onReopened);
    connect(&m_hold, &QTimer::timeout, this, &TriggerController::onHoldElapsed);
}

void TriggerController::reload()
{
    if (m_source) {
        m_source->stop();
        discardSource();
    }
    m_hold.stop();
    m_active = false;
    m_settings = TriggerSettings::current();
    setProblem({});

    m_source = m_factory(AppSettings::instance().triggerKind, this);
    if (!m_source)
        return;
    connect(m_source, &TriggerSource::triggeredOn, this, &TriggerController::onTriggeredOn);
    connect(m_source, &TriggerSource::triggeredOff, this, &TriggerController::onTriggeredOff);
    connect(m_source, &TriggerSource::logMessage, this, &TriggerController::onSourceLine);
    connect(m_source, &TriggerSource::errorOccurred, this, &TriggerController::onSourceError);
    if (!m_source->start())
        discardSource();
}

/// The source is deleted later, since it may be its own signal that leads here; it emits nothing after this.
void TriggerController::discardSource()
{
    m_source->disconnect(this);
    m_source->deleteLater();
    m_source = nullptr;
    m_reopen.stop();
    m_reopened.stop();
    m_lost = false;
}

void TriggerController::onSourceLine(const QString& text)
{
    if (!m_lost) // else onReopened() will tell
        Q_EMIT logMessage(text);
}

void TriggerController::onSourceError(const QString& text)
{
    const bool lost = !m_source->isActive();
    if (lost)
        m_reopen.start(ReopenInterval); // a first start that fails takes that back
    m_reopened.stop();
    if (lost && m_lost) // known
        return;
    m_lost = lost;
    setProblem(text);
    Q_EMIT errorOccurred(text);
    Q_EMIT logMessage(text);
}

void TriggerController::setProblem(const QString& text)
{
    if (std::exchange(m_problem, text) != text)
        Q_EMIT problemChanged();
}

/// An open input that could not be read can be read again.
void TriggerController::onInputHeard()
{
    if (!m_lost)
        setProblem({});
}

void TriggerController::reopen()
{
    QElapsedTimer taken;
    taken.start();
    if (m_source->start())
        m_reopened.start(BackAfter);
    else
        m_reopen.start(std::max(ReopenInterval, ReopenTimePart * std::chrono::milliseconds(taken.elapsed())));
}

void TriggerController::onReopened()
{
    m_lost = false;
    setProblem({});
    Q_EMIT logMessage(tr("The trigger is back: %1").arg(m_source->description()));
}

void TriggerController::setPaused(bool paused)
{
    m_paused = paused;
    if (!paused && m_active)
        applyState();
}

void TriggerController::onTriggeredOn()
{
    m_hold.stop();
    onInputHeard();
    if (m_active)
        return;
    m_active = true;
    Q_EMIT triggerStateChanged(true);
    Q_EMIT logMessage(tr("Trigger on"));
    applyState();
}

void TriggerController::onTriggeredOff()
{
    onInputHeard();
    if (!m_active)
        return;
    const int holdSeconds = AppSettings::instance().holdSeconds;
    if (holdSeconds > 0)
        m_hold.start(std::chrono::seconds(std::min(holdSeconds, MaxHoldSeconds)));
    else
        onHoldElapsed();
}

void TriggerController::onHoldElapsed()
{
    m_active = false;
    Q_EMIT triggerStateChanged(false);
    Q_EMIT logMessage(tr("Trigger off"));
    applyState();
}

void TriggerController::applyState()
{
    if (!m_recorder || !m_source || m_paused)
        return;
    const AppSettings& settings = AppSettings::instance();
    const bool allowed = !settings.autoMode || settings.schedule.isActive(m_now());
    const bool wanted = m_active && allowed;
    if (wanted && !m_recorder->isRecording())
        m_recorder->start(Reason::text(Reason::Trigger));
    else if (!wanted && m_recorder->isRecording())
        m_recorder->stop(Reason::text(Reason::Trigger));
}
