#pragma once

#include <array>
#include <cstddef>

/// What an operator can be alarmed of, in the order of the list that shows it.
enum class AlarmKind {
    NoAudio,
    Silence,
    ChannelDead,
    LevelStuck,
    NotRecording,
    CannotWrite,
    DiskLow,
    ClockWrong,
    CopyBehind,
    TriggerLost,
    Restarted,
};

/// One row per alarm. The delay is the time, in seconds, for which it must last before anybody is told.
struct AlarmRow {
    AlarmKind kind;
    const char* name; ///< in the journal, in messages to other programs, and in the key of its switch
    const char* switchKey;
    const char* delayKey;
    int defaultDelaySeconds;
    bool isLogged; ///< false: what it is about writes lines of its own
};

inline constexpr std::array AlarmRows{
    AlarmRow{AlarmKind::NoAudio, "noAudio", "alarms/noAudio", "alarms/noAudioAfter", 10, false},
    AlarmRow{AlarmKind::Silence, "silence", "alarms/silence", "alarms/silenceAfter", 0, false},
    AlarmRow{AlarmKind::ChannelDead, "channelDead", "alarms/channelDead", "alarms/channelDeadAfter", 60, true},
    AlarmRow{AlarmKind::LevelStuck, "levelStuck", "alarms/levelStuck", "alarms/levelStuckAfter", 300, true},
    AlarmRow{AlarmKind::NotRecording, "notRecording", "alarms/notRecording", "alarms/notRecordingAfter", 10, false},
    AlarmRow{AlarmKind::CannotWrite, "cannotWrite", "alarms/cannotWrite", "alarms/cannotWriteAfter", 0, false},
    AlarmRow{AlarmKind::DiskLow, "diskLow", "alarms/diskLow", "alarms/diskLowAfter", 0, true},
    AlarmRow{AlarmKind::ClockWrong, "clockWrong", "alarms/clockWrong", "alarms/clockWrongAfter", 0, true},
    AlarmRow{AlarmKind::CopyBehind, "copyBehind", "alarms/copyBehind", "alarms/copyBehindAfter", 3600, false},
    AlarmRow{AlarmKind::TriggerLost, "triggerLost", "alarms/triggerLost", "alarms/triggerLostAfter", 10, false},
    AlarmRow{AlarmKind::Restarted, "restarted", "alarms/restarted", "alarms/restartedAfter", 0, false},
};
inline constexpr std::size_t AlarmCount = AlarmRows.size();

/// Whether an alarm is sent, and after how long.
struct AlarmSetting {
    bool enabled = true;
    int delaySeconds = 0;
};
