#include "station/alarmcentre.h"

#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/alarmoutbox.h"
#include "station/heartbeat.h"
#include "station/stationstatus.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto LookInterval = 1s;

} // namespace

AlarmCentre::AlarmCentre(Recorder* recorder, Station station, QObject* parent)
    : QObject(parent),
      m_recorder(recorder),
      m_station(std::move(station)),
      m_board(new AlarmBoard(this)),
      m_outbox(new AlarmOutbox(
          Channel::dataFolder() + QStringLiteral("/alarms.json"), [this] { return m_station.status().toJson(); },
          this)),
      m_heartbeat(new Heartbeat(m_station.isAudioWritten, this))
{
    m_clock.start();
    m_look.setInterval(LookInterval);
    connect(&m_look, &QTimer::timeout, this, &AlarmCentre::look);
    connect(recorder, &Recorder::channelLevels, this, [this](double leftPeakDb, double rightPeakDb) {
        m_levels.add(leftPeakDb, rightPeakDb, AppSettings::instance().silenceThresholdDb);
    });
    connect(recorder, &Recorder::recordingChanged, this, [this](bool recording) {
        if (!recording) {
            m_levels.reset();
            m_verdict = {};
        }
        look();
    });
    connect(m_board, &AlarmBoard::raised, this, &AlarmCentre::logAlarm);
    connect(m_board, &AlarmBoard::over, this, &AlarmCentre::logAlarm);
    connect(m_board, &AlarmBoard::raised, m_outbox, &AlarmOutbox::add);
    connect(m_board, &AlarmBoard::over, m_outbox, &AlarmOutbox::add);
    connect(m_outbox, &AlarmOutbox::logMessage, this, &AlarmCentre::logMessage);
    connect(m_outbox, &AlarmOutbox::failed, this, &AlarmCentre::errorOccurred);
    connect(m_heartbeat, &Heartbeat::logMessage, this, &AlarmCentre::logMessage);
    connect(m_heartbeat, &Heartbeat::failed, this, &AlarmCentre::errorOccurred);
}

void AlarmCentre::begin()
{
    m_look.start();
    settingsChanged();
}

void AlarmCentre::settingsChanged()
{
    m_outbox->send();
    m_heartbeat->beat();
}

void AlarmCentre::stop()
{
    m_look.stop();
}

void AlarmCentre::look()
{
    if (!m_look.isActive())
        return;
    if (m_recorder->isRecording())
        m_verdict = m_levels.look();
    const StationStatus now = m_station.state();
    AlarmBoard::Conditions conditions = now.alarmConditions();
    // While nothing is heard of the source, what was wrong with it counts as wrong.
    for (const AlarmKind kind : {AlarmKind::NoAudio, AlarmKind::Silence, AlarmKind::ChannelDead, AlarmKind::LevelStuck})
        conditions[size_t(kind)] |= now.tryingAgain && m_board->isRaised(kind);
    m_board->look(conditions, m_clock.elapsed(), QDateTime::currentDateTime());
    const QString shown = QStringLiteral("%1 %2").arg(now.wordText()).arg(int(now.isAlarming()) + 2 * int(now.diskLow));
    if (std::exchange(m_shown, shown) != shown)
        Q_EMIT stateChanged();
}

void AlarmCentre::logAlarm(const Alarm& alarm)
{
    if (!AlarmRows[size_t(alarm.kind)].isLogged)
        return;
    if (alarm.isOver)
        Q_EMIT logMessage(alarm.text);
    else
        Q_EMIT errorOccurred(alarm.text);
}
