#pragma once

#include "station/alarmboard.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

/// Whether a recording is wanted just now, and by whom.
struct RecordingWish {
    bool wanted = false;
    QString by; ///< "manual", "scheduler" or "trigger"; empty: nobody wants one

    /// In automatic mode the schedule alone decides, since it stops what others start outside its hours.
    /// \param manual somebody pressed Record, and nobody has pressed Stop since.
    static RecordingWish decide(bool automatic, bool inSchedule, bool triggerActive, bool manual);

    friend bool operator==(const RecordingWish&, const RecordingWish&) = default;
};

/// What a station does, as a plain value: for the window, the command line and whoever watches from outside.
struct StationStatus {
    Q_DECLARE_TR_FUNCTIONS(StationStatus)
public:
    QString version;
    QString channel; ///< empty for the first one
    bool recording = false;
    QDateTime recordingSince; ///< invalid while stopped
    RecordingWish wish;
    QString file; ///< path of the file being written; empty: none
    double leftDb = 0.0; ///< peak of the first channel, dBFS
    double rightDb = 0.0; ///< peak of the second channel; in mono the same as leftDb
    QString source; ///< display name of the source; empty while there is none
    double secondsSinceAudio = -1.0; ///< negative: no audio has come in this run
    QString trigger; ///< "none", "off" or "on"
    bool paused = false; ///< the operator wants nothing recorded for a while
    QDateTime pausedUntil; ///< when that ends by itself; invalid: it does not, or there is no pause
    bool automatic = false;
    QDateTime blockEnd; ///< end of the scheduled block; invalid outside of one
    qint64 freeBytes = -1; ///< of the recordings folder; negative: unknown
    bool tryingAgain = false; ///< an error ended a recording, and it is started again until it runs
    bool noAudio = false; ///< it records, but nothing comes from the source
    QDateTime silentSince; ///< invalid: it is not silent
    bool channelDead = false; ///< just now
    bool levelStuck = false; ///< just now
    bool cannotWrite = false; ///< the last attempt to write failed
    bool triggerLost = false; ///< one is configured and does not work
    bool diskLow = false; ///< the free space lasts for less than the settings ask for
    bool copyEnabled = false; ///< there is a second copy
    int copyBehind = 0; ///< closed recordings that it lacks
    bool copyLate = false; ///< it has lacked some for as long as the settings tolerate
    QString lastError;
    QDateTime lastErrorAt; ///< invalid: no error since the start
    QString lastFile; ///< name of the last file closed

    /// The one thing that matters most just now.
    enum class Word { Idle, Recording, Copy, Disk, Silence, NoAudio, NotRecording, TryingAgain };
    Word word() const;
    /// That in capitals, to be read from the door.
    QString wordText() const;
    /// Whether somebody should come.
    bool isAlarming() const;
    AlarmBoard::Conditions alarmConditions() const;

    /// Every member by its name, times as ISO 8601 with offset, the unknown as null.
    QJsonObject toJson() const;
};
