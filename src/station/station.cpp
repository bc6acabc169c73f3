#include "station/station.h"

#include "archive/archiveindex.h"
#include "archive/housekeeper.h"
#include "archive/spacekeeper.h"
#include "engine/levelanalyzer.h"
#include "engine/reasons.h"
#include "engine/recorder.h"
#include "engine/schedulecontroller.h"
#include "net/silencealert.h"
#include "net/updatechecker.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/alarmcentre.h"
#include "station/archivecopy.h"
#include "station/audiowatch.h"
#include "station/clockwatch.h"
#include "station/diskspace.h"
#include "station/folderlock.h"
#include "station/journal.h"
#include "station/journalfeed.h"
#include "station/playbackname.h"
#include "station/recordingpause.h"
#include "station/recordingretry.h"
#include "triggers/triggercontroller.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QLoggingCategory>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

// What the operator sees, a service manager or a terminal gets too.
Q_LOGGING_CATEGORY(lcStation, "tidewell.station")
Q_LOGGING_CATEGORY(lcRecorder, "tidewell.recorder")
Q_LOGGING_CATEGORY(lcScheduler, "tidewell.scheduler")
Q_LOGGING_CATEGORY(lcHousekeeper, "tidewell.housekeeper")
Q_LOGGING_CATEGORY(lcCopy, "tidewell.copy")
Q_LOGGING_CATEGORY(lcTrigger, "tidewell.trigger")
Q_LOGGING_CATEGORY(lcAlert, "tidewell.alert")
Q_LOGGING_CATEGORY(lcUpdate, "tidewell.update")
Q_LOGGING_CATEGORY(lcJournal, "tidewell.journal")

namespace {

constexpr auto RefreshInterval = 30s;
constexpr auto WishInterval = 5s;
constexpr auto StartupCheckDelay = 8s;
/// A full disk takes the first blocks of each attempt.
constexpr auto ProvenAfter = 3s;
constexpr qint64 OverloadLineMs = 60'000;
constexpr qint64 RefusalLineMs = 600'000;

} // namespace

Station::Station(QObject* engineParent)
    : QObject(engineParent),
      m_settings(AppSettings::instance()),
      m_folderLock(std::make_unique<FolderLock>()),
      m_leftDb(LevelAnalyzer::FloorDb),
      m_rightDb(LevelAnalyzer::FloorDb)
{
    createEngines(engineParent ? engineParent : this);
    connectEngines();
    connectJournal();
    connectDisk();
    m_wishTimer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_wishTimer, &QTimer::timeout, this, &Station::updateWish);
    m_refresh.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_refresh, &QTimer::timeout, this, &Station::refresh);
    m_proving.setSingleShot(true);
    m_proving.setInterval(ProvenAfter);
    connect(&m_proving, &QTimer::timeout, this, &Station::onProven);
}

Station::~Station()
{
    // The last segment must be closed and reported while everything it is reported to is still there.
    delete m_recorder;
    m_feed->programEnded();
}

void Station::createEngines(QObject* parent)
{
    m_journal = new Journal(journalFolder(), this);
    m_archive = new ArchiveIndex(parent);
    if (m_folderLock->take(m_settings.outputFolder).isEmpty()) // else begin() tells why
        m_archive->setFolder(m_settings.outputFolder);
    Recorder::Environment environment = Recorder::Environment::real();
    environment.refusal = [this] { return claimFolder(); };
    m_recorder = new Recorder(m_archive, parent, environment);
    m_schedule = new ScheduleController(m_recorder, parent);
    m_housekeeper = new Housekeeper(m_archive, parent);
    m_updates = new UpdateChecker(parent);
    m_trigger = new TriggerController(m_recorder, parent);

    m_silenceAlert = new SilenceAlert(this);
    m_feed = new JournalFeed(*m_journal, this);
    m_audioWatch = new AudioWatch(m_recorder, this);
    m_alarms = new AlarmCentre(m_recorder,
                               {[this] { return state(); }, [this] { return status(); },
                                [this] {
                                    return m_audioWatch->secondsSinceAudio() >= 0.0 && !m_audioWatch->isLost() &&
                                           !m_cannotWrite && !m_attempts.isFailing();
                                }},
                               this);
    m_retry = new RecordingRetry(
        m_recorder, [this] { return currentWish(); }, this);
    m_clockWatch = new ClockWatch(this);
    m_diskSpace = new DiskSpace(this);
    m_pause = new RecordingPause(this);
    m_spaceKeeper = new SpaceKeeper(m_archive, this);
    m_archiveCopy = new ArchiveCopy(m_archive, this);
    m_playbackName = new PlaybackName(this);
}

void Station::connectEngines()
{
    const auto logAs = [this](const QLoggingCategory& category) {
        return [this, &category](const QString& text) { addLine(category, text, false); };
    };
    const auto logErrorAs = [this](const QLoggingCategory& category) {
        return [this, &category](const QString& text) { addLine(category, text, true); };
    };
    connect(m_recorder, &Recorder::logMessage, this, logAs(lcRecorder()));
    connect(m_recorder, &Recorder::errorOccurred, this, &Station::onRecorderError);
    connect(m_recorder, &Recorder::silenceDetected, this, &Station::onSilenceDetected);
    connect(m_recorder, &Recorder::audioRestored, this, [this] {
        m_silentSince = {};
        addLine(lcRecorder(), tr("Audio restored"), false);
    });
    connect(m_recorder, &Recorder::fileFinished, this, [this](const RecordInfo& info) {
        m_lastFile = info.fileName;
        addLine(lcRecorder(), tr("Saved %1 (%2)").arg(info.fileName, QLocale().formattedDataSize(info.bytes)), false);
    });
    connect(m_recorder, &Recorder::overloadDetected, this, &Station::onOverload);
    connect(m_recorder, &Recorder::channelLevels, this, [this](double leftPeakDb, double rightPeakDb) {
        m_leftDb = leftPeakDb;
        m_rightDb = rightPeakDb;
    });
    connect(m_recorder, &Recorder::recordingChanged, this, [this](bool recording) {
        m_startedAt = recording ? QDateTime::currentDateTime() : QDateTime();
        refresh();
    });
    connect(m_recorder, &Recorder::started, this, &Station::onStarted);
    connect(m_recorder, &Recorder::stopped, this, &Station::onStopped);
    connect(m_audioWatch, &AudioWatch::audioBegan, this, &Station::onAudioBegan);
    connect(m_audioWatch, &AudioWatch::audioLost, this, &Station::onAudioLost);
    connect(m_audioWatch, &AudioWatch::audioReturned, this, &Station::onAudioReturned);
    connect(m_audioWatch, &AudioWatch::restartWanted, m_recorder, &Recorder::restartSource);
    connect(m_schedule, &ScheduleController::logMessage, this, logAs(lcScheduler()));
    connect(m_housekeeper, &Housekeeper::logMessage, this, logAs(lcHousekeeper()));
    connect(m_retry, &RecordingRetry::changed, m_alarms, &AlarmCentre::look);
    connect(m_alarms, &AlarmCentre::stateChanged, this, &Station::stateChanged);
    connect(m_alarms, &AlarmCentre::logMessage, this, logAs(lcAlert()));
    connect(m_alarms, &AlarmCentre::errorOccurred, this, logErrorAs(lcAlert()));
    connect(m_diskSpace, &DiskSpace::changed, this, &Station::judgeDisk);
    connect(m_trigger, &TriggerController::errorOccurred, this, [this](const QString& text) { m_triggerError = text; });
    connect(m_trigger, &TriggerController::logMessage, this,
            [this](const QString& text) { addLine(lcTrigger(), text, text == std::exchange(m_triggerError, {})); });
    connect(m_trigger, &TriggerController::triggerStateChanged, this, &Station::updateWish);
    connect(m_pause, &RecordingPause::changed, this, [this](bool paused) { paused ? onPauseBegan() : onPauseEnded(); });
    connect(m_updates, &UpdateChecker::updateAvailable, this, &Station::onUpdateAvailable);
    connect(m_updates, &UpdateChecker::upToDate, this, [this] { m_settings.save(); });
    connect(m_updates, &UpdateChecker::checkFailed, this, &Station::onUpdateCheckFailed);
    connect(m_silenceAlert, &SilenceAlert::logMessage, this, logAs(lcAlert()));
    connect(m_journal, &Journal::failed, this, logErrorAs(lcJournal()));
    connect(m_journal, &Journal::recovered, this, logAs(lcJournal()));
    // The end of the session does not ask the faces.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        m_exiting = true;
        m_recorder->stop(Reason::text(Reason::Exit));
    });
}

void Station::connectJournal()
{
    m_feed->watch(m_alarms->board());
    m_feed->watch(m_alarms->outbox());
    m_feed->watch(m_recorder);
    m_feed->watch(m_housekeeper);
    m_feed->watch(m_silenceAlert);
    connect(m_audioWatch, &AudioWatch::audioBegan, m_feed, &JournalFeed::audioBegan);
    connect(m_clockWatch, &ClockWatch::clockSet, m_feed, &JournalFeed::clockSet);
    connect(&m_settings, &AppSettings::changed, m_feed, &JournalFeed::settingsChanged);
}

/// What keeps the disk from filling up, and the second copy.
void Station::connectDisk()
{
    const auto askForSpace = [this] { m_diskSpace->ask(m_settings.outputFolder); };
    connect(m_recorder, &Recorder::fileStarted, this, askForSpace);
    connect(m_diskSpace, &DiskSpace::changed, m_spaceKeeper, [this](qint64 freeBytes) {
        if (m_diskSpace->folder() == m_archive->folder()) // else the answer is about another disk, or another's folder
            m_spaceKeeper->onFreeSpace(freeBytes, m_diskSpace->totalBytes());
    });
    connect(m_spaceKeeper, &SpaceKeeper::logMessage, this, [this, askForSpace](const QString& text) {
        addLine(lcHousekeeper(), text, false);
        askForSpace();
    });
    connect(m_spaceKeeper, &SpaceKeeper::errorOccurred, this,
            [this](const QString& text) { addLine(lcHousekeeper(), text, true); });
    connect(this, &Station::settingsApplied, m_archiveCopy, &ArchiveCopy::reload);
    connect(m_archiveCopy, &ArchiveCopy::logMessage, this,
            [this](const QString& text) { addLine(lcCopy(), text, false); });
    connect(m_archiveCopy, &ArchiveCopy::errorOccurred, this,
            [this](const QString& text) { addLine(lcCopy(), text, true); });
    m_feed->watch(m_spaceKeeper);
    m_feed->watch(m_archiveCopy);
}

void Station::begin()
{
    m_feed->programStarted();
    useFolder();
    m_refresh.start(RefreshInterval);
    m_wishTimer.start(WishInterval);
    m_alarms->begin();
    synchroniseAutomatic();
    log(tr("Tidewell started"));
    // With the event loop, so that whoever shows the station is there.
    QTimer::singleShot(0, m_schedule, &ScheduleController::evaluate);
    checkForUpdatesAtStartup();
    m_trigger->reload();
    updateWish();
    Q_EMIT settingsApplied();
}

void Station::reportCrash(const QString& reportPath)
{
    m_feed->programCrashed(reportPath);
    m_alarms->board()->tell(AlarmKind::Restarted, QDateTime::currentDateTime());
    logError(tr("Tidewell has crashed and was started again. This file may tell why: %1")
                 .arg(QDir::toNativeSeparators(reportPath)));
}

QString Station::journalFolder()
{
    return Channel::dataFolder() + QStringLiteral("/Journal");
}

/// \return why the folder must not be used: it is another channel's, which must then be left alone altogether, by the
/// retention and the journal too.
QString Station::claimFolder()
{
    QString refusal = m_folderLock->take(m_settings.outputFolder);
    const QString folder = refusal.isEmpty() ? m_settings.outputFolder : QString();
    m_archive->setFolder(folder);
    m_journal->setRecordingsFolder(folder);
    m_refusal = refusal;
    return refusal;
}

/// The folder is claimed at once, so that the operator of a second channel learns of it before that should record.
void Station::useFolder()
{
    const QString refusal = claimFolder();
    if (!refusal.isEmpty())
        onRecorderError(refusal);
    else if (!m_folderLock->isHeld() && QFileInfo::exists(m_settings.outputFolder))
        log(tr("No lock can be made in the recordings folder, so another channel that uses it would not be noticed."));
}

void Station::synchroniseAutomatic()
{
    m_schedule->setEnabled(m_settings.autoMode);
    refresh();
}

void Station::checkForUpdatesAtStartup()
{
    if (m_settings.checkAtStartup && UpdateChecker::isDue(m_settings.lastCheck, QDateTime::currentDateTime()))
        QTimer::singleShot(StartupCheckDelay, m_updates, [this] { m_updates->check(true); });
}

void Station::startRecording()
{
    m_retry->cancel();
    m_recorder->start(Reason::text(Reason::Manual));
    m_resumeByHand = false;
    m_pause->end(); // after the start, so that schedule and trigger find a recording that was started by hand
}

void Station::stopRecording()
{
    m_manual = false;
    if (m_retry->isTrying())
        log(tr("No further attempts are made"));
    m_retry->cancel();
    m_resumeByHand = false;
    m_recorder->stop(Reason::text(Reason::Manual));
    updateWish();
}

void Station::toggleRecording()
{
    if (m_recorder->isRecording())
        stopRecording();
    else
        startRecording();
}

void Station::pauseRecording(std::chrono::minutes length)
{
    m_pause->begin(length);
}

void Station::endPause()
{
    m_pause->end();
}

void Station::onPauseBegan()
{
    const bool byHand = m_manual || m_resumeByHand;
    m_schedule->setPaused(true);
    m_trigger->setPaused(true);
    log(m_pause->text());
    m_feed->paused(m_pause->until());
    stopRecording();
    m_resumeByHand = byHand;
}

/// The schedule has the first word, then an active trigger. What was started by hand goes on by hand; in automatic mode
/// the schedule would stop it again.
void Station::onPauseEnded()
{
    log(tr("The pause is over"));
    m_feed->resumed();
    const bool byHand = std::exchange(m_resumeByHand, false) && !m_settings.autoMode;
    m_schedule->setPaused(false);
    m_trigger->setPaused(false);
    if (byHand) {
        m_manual = true;
        m_retry->restart(Reason::text(Reason::Manual));
    }
    updateWish();
}

void Station::setAutomatic(bool on)
{
    m_settings.autoMode = on;
    m_settings.save();
    m_schedule->setEnabled(on);
    updateWish();
    Q_EMIT settingsApplied();
}

void Station::setSchedule(const Schedule& schedule)
{
    m_settings.schedule = schedule;
    m_settings.save();
    log(tr("Schedule updated"));
    m_schedule->evaluate();
    updateWish();
    Q_EMIT settingsApplied();
}

void Station::checkForUpdates()
{
    if (m_updates->isChecking())
        return;
    addLine(lcUpdate(), tr("Checking for updates..."), false);
    m_updates->check(false);
}

void Station::applySettings(bool wasRecording)
{
    useFolder();
    const bool triggerEnded = reloadTrigger();
    // A recording that ended while the settings were being edited starts again only if somebody still wants it.
    if (wasRecording && !triggerEnded && (m_recorder->isRecording() || m_wish.wanted)) {
        m_recorder->stop(Reason::text(Reason::SettingsChanged));
        m_retry->restart(Reason::text(Reason::SettingsChanged));
    }
    m_alarms->settingsChanged();
    synchroniseAutomatic();
    if (triggerEnded)
        m_schedule->evaluate(); // in a marked hour it goes on at once
    log(tr("Settings saved"));
    updateWish();
    Q_EMIT settingsApplied();
}

/// A trigger that is made anew has forgotten that it is on, so nobody would ever end what it has started. Left as it
/// is, it goes on with its recording and its run-on. \return whether a recording was ended.
bool Station::reloadTrigger()
{
    if (m_trigger->isUpToDate())
        return false;
    const bool ends = m_recorder->isRecording() && m_startedBy == QLatin1String(Reason::Trigger);
    if (ends)
        m_recorder->stop(Reason::text(Reason::Trigger));
    m_trigger->reload();
    updateWish();
    return ends;
}

void Station::reloadSettings()
{
    const int serial = m_settings.fileSerial;
    m_settings.load();
    m_settings.fileSerial = serial;
    m_feed->settingsChanged();
    applySettings(m_recorder->isRecording());
}

void Station::exit()
{
    m_exiting = true;
    m_alarms->stop();
    m_recorder->stop(Reason::text(Reason::Exit));
    Q_EMIT exitRequested();
}

void Station::onFilesDeleted(const QStringList& paths)
{
    for (const QString& path : paths)
        m_feed->fileDeleted(path, QStringLiteral("hand"));
}

void Station::log(const QString& text)
{
    addLine(lcStation(), text, false);
}

void Station::logError(const QString& text)
{
    addLine(lcStation(), text, true);
}

void Station::addLine(const QLoggingCategory& category, const QString& text, bool isError)
{
    const bool ofAttempt = &category == &lcRecorder() || &category == &lcScheduler();
    if (ofAttempt && !isError && m_attempts.isFailing()) {
        m_attempts.hold({&category, text});
        return;
    }
    if (isError) {
        m_lastError = text;
        m_lastErrorAt = QDateTime::currentDateTime();
        qCWarning(category).noquote() << text;
    } else {
        qCInfo(category).noquote() << text;
    }
    m_journal->write(QLatin1String(isError ? JournalEntry::Error : JournalEntry::Log), text,
                     {{QStringLiteral("from"), QString::fromLatin1(category.categoryName())}});
    if (isError)
        Q_EMIT errorLogged(text);
    else
        Q_EMIT lineLogged(text);
}

void Station::refresh()
{
    m_clockWatch->look();
    m_diskSpace->ask(m_settings.outputFolder);
    // Only where that device is the source: the sound server may be slow.
    if (CaptureBackend(m_settings.backend) == CaptureBackend::Loopback)
        m_playbackName->ask(m_settings.playbackId);
}

RecordingWish Station::currentWish() const
{
    if (m_pause->isActive())
        return {};
    return RecordingWish::decide(m_settings.autoMode, m_settings.schedule.isActive(QDateTime::currentDateTime()),
                                 m_trigger->isActive(), m_manual);
}

void Station::updateWish()
{
    if (m_exiting)
        return;
    const RecordingWish wish = currentWish();
    m_retry->reconsider();
    if (!wish.wanted) {
        m_cannotWrite = false;
        endAttempts(false);
    }
    if (wish != std::exchange(m_wish, wish))
        m_feed->wishChanged(wish);
}

/// What is deleted anyway when the disk is full is as good as free.
void Station::judgeDisk()
{
    const qint64 perHour = 3600 * estimatedBytesPerSecond(m_settings);
    const qint64 free = m_diskSpace->freeBytes();
    m_diskLow =
        free >= 0 && free < m_settings.diskLowHours * perHour &&
        (!m_settings.deleteWhenFull || free + m_spaceKeeper->deletableBytes() < m_settings.diskLowHours * perHour);
}

/// An attempt has worked.
void Station::onProven()
{
    m_retry->cancel();
    m_cannotWrite = false;
    endAttempts(true);
}

void Station::onStarted(const QString& reason)
{
    m_recorderError.clear();
    if (reason == QLatin1String(Reason::Manual))
        m_manual = true;
    if (reason != QLatin1String(Reason::SettingsChanged))
        m_startedBy = reason;
    updateWish();
}

void Station::onStopped(const QString& reason)
{
    // What ended by an error, or will go on with other settings, is wanted as before.
    for (const char* final : {Reason::Manual, Reason::Scheduler, Reason::Trigger}) {
        if (reason == QLatin1String(final))
            m_manual = false;
    }
    m_leftDb = m_rightDb = LevelAnalyzer::FloorDb;
    m_silentSince = {};
    m_proving.stop();
    m_cannotWrite = reason == QLatin1String(Reason::WriteError) || reason == QLatin1String(Reason::SplitFailed) ||
                    (m_cannotWrite && Reason::isError(reason));
    if (!Reason::isError(reason))
        endAttempts(true);
    else if (m_attempts.isFailing()) // counted by its error already
        forgetAttempt();
    else if (m_wish.wanted)
        addFailure(m_recorderError, true);
    updateWish();
}

void Station::onRecorderError(const QString& text)
{
    // The automatic mode tries a folder that belongs to another channel every 5 seconds.
    const bool repeated =
        text == m_refusal && m_sinceRefusalLine.isValid() && !m_sinceRefusalLine.hasExpired(RefusalLineMs);
    m_recorderError = text;
    const bool startFailed = !m_recorder->isRecording() && m_wish.wanted;
    if (m_attempts.isFailing() || startFailed) {
        addFailure(text, false);
        return;
    }
    if (repeated)
        return;
    if (text == m_refusal)
        m_sinceRefusalLine.start();
    addLine(lcRecorder(), text, true);
}

/// Until an attempt works, its lines and events wait: they would be the same every 5 seconds.
/// \param isShown whether the log has the line already.
void Station::addFailure(const QString& text, bool isShown)
{
    const QString before = m_attempts.line(text);
    if (!m_attempts.addFailure(text, QDateTime::currentDateTime()))
        Q_EMIT errorAmended(before, m_attempts.line(text));
    else if (!isShown)
        addLine(lcRecorder(), text, true);
    forgetAttempt();
    m_feed->hold();
}

void Station::forgetAttempt()
{
    m_attempts.forgetHeld();
    m_feed->forget();
}

void Station::endAttempts(bool worked)
{
    if (!m_attempts.isFailing())
        return;
    const int failures = m_attempts.failures();
    const QDateTime since = m_attempts.since();
    const QList<AttemptLog::Line> held = m_attempts.end();
    if (!worked)
        m_feed->forget();
    m_feed->keep();
    if (!worked)
        return;
    m_feed->retried(failures, since);
    for (const AttemptLog::Line& line : held)
        addLine(*line.category, line.text, false);
}

void Station::onAudioBegan()
{
    m_proving.start();
    compareDevice();
    refresh();
}

/// The chosen input device may be missing, and another one recorded in its place.
void Station::compareDevice()
{
    const QString label = m_settings.deviceLabel;
    const QString recorded = m_recorder->sourceDescription();
    // A device that was chosen by its identifier has no label of its own.
    const bool comparable = CaptureBackend(m_settings.backend) == CaptureBackend::InputDevice &&
                            !m_settings.deviceId.isEmpty() && label != QString::fromUtf8(m_settings.deviceId);
    if (comparable && !label.isEmpty() && recorded != label)
        addLine(lcRecorder(),
                tr("The chosen audio input %1 is not there. %2 is recorded instead.").arg(label, recorded), true);
}

/// An attempt that hears nothing either is no news: a server that hangs takes a connection and says nothing.
void Station::onAudioLost()
{
    if (m_attempts.isFailing())
        return;
    m_feed->audioLost();
    addLine(lcRecorder(), tr("No audio arrives from %1.").arg(m_recorder->sourceDescription()), true);
}

void Station::onAudioReturned(qint64 ms)
{
    if (m_attempts.isFailing())
        return;
    m_feed->audioReturned(ms);
    compareDevice(); // the source was opened anew
    addLine(lcRecorder(), tr("Audio arrives again after %n second(s).", nullptr, int(ms / 1000)), false);
}

void Station::onSilenceDetected(int seconds)
{
    m_silentSince = QDateTime::currentDateTime().addSecs(-seconds);
    addLine(lcRecorder(), tr("Silence detected (longer than %n second(s))", nullptr, seconds), true);
    m_silenceAlert->send({seconds, m_recorder->sourceDescription(), m_recorder->currentFilePath()});
}

void Station::onOverload()
{
    if (m_sinceOverloadLine.isValid() && !m_sinceOverloadLine.hasExpired(OverloadLineMs))
        return;
    m_sinceOverloadLine.start();
    m_feed->overloaded();
    addLine(lcRecorder(),
            tr("Input above full scale - peaks are being limited. Reduce the input gain if this persists."), false);
}

void Station::onUpdateAvailable(const UpdateInfo& info)
{
    m_settings.save(); // the checker has noted in them when it asked
    addLine(lcUpdate(), tr("Update available: version %1").arg(info.latestVersion), false);
}

void Station::onUpdateCheckFailed(const QString& reason)
{
    m_settings.save();
    addLine(lcUpdate(), tr("Update check failed: %1").arg(reason), false);
}

StationStatus Station::state() const
{
    StationStatus status;
    status.recording = m_recorder->isRecording();
    status.recordingSince = m_startedAt;
    status.wish = m_wish;
    status.tryingAgain = m_wish.wanted && (m_retry->isTrying() || m_attempts.isFailing());
    status.noAudio = m_audioWatch->isLost();
    status.silentSince = m_silentSince;
    status.channelDead = m_alarms->levels().channelDead && m_settings.channels == 2;
    status.levelStuck = m_alarms->levels().levelStuck;
    status.cannotWrite = m_cannotWrite;
    status.triggerLost = !m_trigger->problem().isEmpty();
    status.diskLow = m_diskLow;
    status.copyEnabled = m_archiveCopy->isEnabled();
    status.copyBehind = m_archiveCopy->filesBehind();
    status.copyLate = m_alarms->board()->isRaised(AlarmKind::CopyBehind);
    return status;
}

StationStatus Station::status() const
{
    StationStatus status = state();
    status.version = QCoreApplication::applicationVersion();
    status.channel = Channel::name();
    status.file = m_recorder->currentFilePath();
    status.leftDb = m_leftDb;
    status.rightDb = m_rightDb;
    status.source = m_recorder->sourceDescription();
    status.secondsSinceAudio = m_audioWatch->secondsSinceAudio();
    status.trigger = QLatin1String(!m_trigger->isConfigured() ? "none" : m_trigger->isOn() ? "on" : "off");
    status.paused = m_pause->isActive();
    status.pausedUntil = m_pause->until();
    status.automatic = m_settings.autoMode;
    status.blockEnd = m_settings.autoMode ? m_settings.schedule.blockEnd(QDateTime::currentDateTime()) : QDateTime();
    status.freeBytes = m_diskSpace->freeBytes();
    status.lastError = m_lastError;
    status.lastErrorAt = m_lastErrorAt;
    status.lastFile = m_lastFile;
    return status;
}
