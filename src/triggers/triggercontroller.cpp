#include "triggers/triggercontroller.h"

#include "engine/reasons.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "triggers/miditrigger.h"
#include "triggers/serialtrigger.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

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

    m_source = m_factory(AppSettings::instance().triggerKind, this);
    if (!m_source)
        return;
    connect(m_source, &TriggerSource::triggeredOn, this, &TriggerController::onTriggeredOn);
    connect(m_source, &TriggerSource::triggeredOff, this, &TriggerController::onTriggeredOff);
    connect(m_source, &TriggerSource::logMessage, this, &TriggerController::logMessage);
    connect(m_source, &TriggerSource::errorOccurred, this, &TriggerController::logMessage);
    if (!m_source->start())
        discardSource();
}

/// The source is deleted later, since it may be its own signal that leads here; it emits nothing after this.
void TriggerController::discardSource()
{
    m_source->disconnect(this);
    m_source->deleteLater();
    m_source = nullptr;
}

void TriggerController::onTriggeredOn()
{
    m_hold.stop();
    if (m_active)
        return;
    m_active = true;
    Q_EMIT triggerStateChanged(true);
    Q_EMIT logMessage(tr("Trigger on"));
    applyState();
}

void TriggerController::onTriggeredOff()
{
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
    if (!m_recorder || !m_source)
        return;
    const AppSettings& settings = AppSettings::instance();
    const bool allowed = !settings.autoMode || settings.schedule.isActive(m_now());
    const bool wanted = m_active && allowed;
    if (wanted && !m_recorder->isRecording())
        m_recorder->start(Reason::text(Reason::Trigger));
    else if (!wanted && m_recorder->isRecording())
        m_recorder->stop(Reason::text(Reason::Trigger));
}
