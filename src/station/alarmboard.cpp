#include "station/alarmboard.h"

#include "settings/appsettings.h"

namespace {

/// "2 h 5 min", for people.
QString duration(qint64 ms)
{
    const qint64 seconds = ms / 1000;
    if (seconds < 60)
        return AlarmBoard::tr("%1 s").arg(seconds);
    if (seconds < 3600)
        return AlarmBoard::tr("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
    return AlarmBoard::tr("%1 h %2 min").arg(seconds / 3600).arg(seconds % 3600 / 60);
}

} // namespace

void AlarmBoard::look(const Conditions& conditions, qint64 monotonicMs, const QDateTime& now)
{
    const AppSettings& settings = AppSettings::instance();
    for (const AlarmRow& row : AlarmRows) {
        const auto index = size_t(row.kind);
        State& state = m_states[index];
        if (!settings.alarms[index].enabled) { // it is not over because nobody wants to hear of it
            state = {};
            continue;
        }
        const bool holds = conditions[index];
        if (holds && !state.sinceMs) {
            state.sinceMs = monotonicMs;
            state.since = now;
        }
        if (holds && !state.raised &&
            monotonicMs - *state.sinceMs >= 1000 * qint64(settings.alarms[index].delaySeconds)) {
            state.raised = true;
            Q_EMIT raised({row.kind, false, sentence(row.kind), state.since, 0});
        }
        if (holds || !state.sinceMs)
            continue;
        const State ended = std::exchange(state, {});
        const qint64 lasted = monotonicMs - *ended.sinceMs;
        if (ended.raised)
            Q_EMIT over({row.kind, true, tr("Back to normal after %1: %2").arg(duration(lasted), displayName(row.kind)),
                         now, lasted});
    }
}

void AlarmBoard::tell(AlarmKind kind, const QDateTime& now)
{
    if (AppSettings::instance().alarms[size_t(kind)].enabled)
        Q_EMIT raised({kind, false, sentence(kind), now, 0});
}

QString AlarmBoard::displayName(AlarmKind kind)
{
    switch (kind) {
    case AlarmKind::NoAudio:
        return tr("No audio");
    case AlarmKind::Silence:
        return tr("Silence");
    case AlarmKind::ChannelDead:
        return tr("One channel dead");
    case AlarmKind::LevelStuck:
        return tr("Level does not move");
    case AlarmKind::NotRecording:
        return tr("Not recording");
    case AlarmKind::CannotWrite:
        return tr("Cannot write");
    case AlarmKind::DiskLow:
        return tr("Disk almost full");
    case AlarmKind::ClockWrong:
        return tr("Clock wrong");
    case AlarmKind::CopyBehind:
        return tr("Second copy behind");
    case AlarmKind::TriggerLost:
        return tr("Trigger lost");
    case AlarmKind::Restarted:
        return tr("Restarted after a crash");
    }
    return {};
}

QString AlarmBoard::sentence(AlarmKind kind)
{
    switch (kind) {
    case AlarmKind::NoAudio:
        return tr("No audio arrives from the source. Check the device, its cable and the sound server.");
    case AlarmKind::Silence:
        return tr("The recorded source is silent.");
    case AlarmKind::ChannelDead:
        return tr("One of the two channels is silent while the other is not. Check the cables.");
    case AlarmKind::LevelStuck:
        return tr("The level does not move: this may be a test tone, hum or a frozen source.");
    case AlarmKind::NotRecording:
        return tr("A recording is wanted, but nothing is being recorded.");
    case AlarmKind::CannotWrite:
        return tr("The recording cannot be written. Check the disk.");
    case AlarmKind::DiskLow:
        return tr("The disk is almost full.");
    case AlarmKind::ClockWrong:
        return tr("The computer's clock is wrong.");
    case AlarmKind::CopyBehind:
        return tr("The second copy is behind. Check the folder that the recordings are copied to.");
    case AlarmKind::TriggerLost:
        return tr("The trigger input is lost. Check its cable.");
    case AlarmKind::Restarted:
        return tr("The program has crashed and was started again.");
    }
    return {};
}
