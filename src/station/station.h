#pragma once

#include "station/stationstatus.h"

#include "station/attemptlog.h"
#include <QDateTime>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class AlarmCentre;
class AppSettings;
class ArchiveCopy;
class ArchiveIndex;
class AudioWatch;
class ClockWatch;
class DiskSpace;
class FolderLock;
class Housekeeper;
class Journal;
class JournalFeed;
class PlaybackName;
class QLoggingCategory;
class Recorder;
class RecordingPause;
class RecordingRetry;
class Schedule;
class ScheduleController;
class SilenceAlert;
class SpaceKeeper;
class TriggerController;
class UpdateChecker;
struct UpdateInfo;

/// One running channel, without a window: creates the engines, wires them, and holds what is policy, such as what
/// accepted settings restart and in which order things end. A window, the command line and a service are thin faces of
/// it. The engines never call the station; they emit signals.
///
/// Use: create, connect, begin(); exit() or the destructor ends it with its file closed. Main thread only.
class Station : public QObject {
    Q_OBJECT
public:
    /// \param engineParent the parent of the engines and of the station itself; null: the station has the engines.
    explicit Station(QObject* engineParent = nullptr);
    /// Stops a recording with the reason "Shutdown" while everybody who listens is still there.
    ~Station() override;

    ArchiveIndex* archive() const { return m_archive; }
    Recorder* recorder() const { return m_recorder; }
    ScheduleController* schedule() const { return m_schedule; }
    UpdateChecker* updates() const { return m_updates; }
    TriggerController* trigger() const { return m_trigger; }
    DiskSpace* diskSpace() const { return m_diskSpace; }
    RecordingPause* pause() const { return m_pause; }
    SpaceKeeper* spaceKeeper() const { return m_spaceKeeper; }
    ArchiveCopy* archiveCopy() const { return m_archiveCopy; }
    PlaybackName* playbackName() const { return m_playbackName; }
    Journal* journal() const { return m_journal; }
    StationStatus status() const;
    /// The part of it that decides StationStatus::word(), and costs next to nothing.
    StationStatus state() const;

    /// Starts the automatic mode, the trigger and the look for updates, as the settings ask for them.
    void begin();
    /// Tells in the log and the journal that the last run crashed and left this report.
    void reportCrash(const QString& reportPath);
    /// Where the channel's journal and crash reports lie on the local disk.
    static QString journalFolder();

    // What the operator can do.
    void startRecording();
    void stopRecording();
    void toggleRecording();
    /// Stops a recording, and nothing starts one until the pause is over or the operator starts one.
    /// \param length zero: the pause does not end by itself.
    void pauseRecording(std::chrono::minutes length);
    /// Ends the pause: what the pause has stopped goes on if it is wanted by then, or was started by hand.
    void endPause();
    void setAutomatic(bool on);
    void setSchedule(const Schedule& schedule);
    /// Looks for an update and logs that it does; ignored while it looks already.
    void checkForUpdates();
    /// The settings were changed and saved: the folder, the source and the format take effect at once, and the trigger
    /// and the automatic mode with them.
    /// \param wasRecording before they were changed: if so, the recording starts again.
    void applySettings(bool wasRecording);
    /// Reads the settings from the store and applies them. The serial number goes on counting.
    void reloadSettings();
    /// Stops a recording with the reason "exit" and asks for the end of the program: exitRequested().
    void exit();
    /// To be called when the operator has deleted these recordings.
    void onFilesDeleted(const QStringList& paths);

public Q_SLOTS:
    /// One line for the log, the journal and the error output.
    void log(const QString& text);
    /// One error line for the log, the journal and the error output.
    void logError(const QString& text);
    /// Asks for the free space and the playback device's name, whose answers may take time, and looks at the clock.
    void refresh();

Q_SIGNALS:
    void lineLogged(const QString& text);
    void errorLogged(const QString& text);
    /// An error line is brought up to date. \param before what it says so far.
    void errorAmended(const QString& before, const QString& text);
    /// StationStatus::word() or its text may have changed.
    void stateChanged();
    /// The automatic mode, the schedule or other settings have changed and are in use.
    void settingsApplied();
    void exitRequested();

private:
    void createEngines(QObject* parent);
    void connectEngines();
    void connectJournal();
    void connectDisk();
    void addLine(const QLoggingCategory& category, const QString& text, bool isError);
    QString claimFolder();
    void useFolder();
    void synchroniseAutomatic();
    void checkForUpdatesAtStartup();
    RecordingWish currentWish() const;
    void updateWish();
    bool reloadTrigger();
    void onPauseBegan();
    void onPauseEnded();
    void onRecorderError(const QString& text);
    void onSilenceDetected(int seconds);
    void onOverload();
    void onStarted(const QString& reason);
    void onStopped(const QString& reason);
    void judgeDisk();
    void onProven();
    void onAudioBegan();
    void compareDevice();
    void onAudioLost();
    void onAudioReturned(qint64 ms);
    void addFailure(const QString& text, bool isShown);
    void forgetAttempt();
    void endAttempts(bool worked);
    void onUpdateAvailable(const UpdateInfo& info);
    void onUpdateCheckFailed(const QString& reason);

    AppSettings& m_settings;
    // The engines, in the order of their creation.
    ArchiveIndex* m_archive = nullptr;
    Recorder* m_recorder = nullptr;
    ScheduleController* m_schedule = nullptr;
    Housekeeper* m_housekeeper = nullptr;
    UpdateChecker* m_updates = nullptr;
    TriggerController* m_trigger = nullptr;
    SilenceAlert* m_silenceAlert = nullptr;

    Journal* m_journal = nullptr;
    JournalFeed* m_feed = nullptr;
    AudioWatch* m_audioWatch = nullptr;
    ClockWatch* m_clockWatch = nullptr;
    DiskSpace* m_diskSpace = nullptr;
    RecordingPause* m_pause = nullptr;
    SpaceKeeper* m_spaceKeeper = nullptr;
    ArchiveCopy* m_archiveCopy = nullptr;
    PlaybackName* m_playbackName = nullptr;
    std::unique_ptr<FolderLock> m_folderLock;
    AlarmCentre* m_alarms = nullptr;
    QTimer m_proving; ///< runs until a run has had audio for long enough
    QDateTime m_silentSince; ///< invalid: it is not silent
    bool m_cannotWrite = false;
    bool m_diskLow = false; ///< looked at when the free space is known anew
    QTimer m_refresh;
    QTimer m_wishTimer;
    RecordingWish m_wish;
    RecordingRetry* m_retry = nullptr;
    AttemptLog m_attempts;
    QString m_recorderError; ///< the last one of this run
    bool m_manual = false; ///< somebody pressed Record, and nobody has pressed Stop since
    bool m_resumeByHand = false; ///< the pause has stopped what somebody had started by hand
    bool m_exiting = false;
    QString m_startedBy; ///< reason of the last start; a restart with other settings counts as the start before
    QString m_triggerError; ///< the line that the trigger is about to tell is this error
    double m_leftDb, m_rightDb; ///< the last reading
    QDateTime m_startedAt;
    QString m_lastError;
    QDateTime m_lastErrorAt;
    QString m_lastFile;
    QString m_refusal; ///< why the folder must not be used; empty: it may
    QElapsedTimer m_sinceRefusalLine; ///< invalid: none yet
    QElapsedTimer m_sinceOverloadLine; ///< invalid: none yet
};
