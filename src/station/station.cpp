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
#include "station/archivecopy.h"
#include "station/audiowatch.h"
#include "station/clockwatch.h"
#include "station/diskspace.h"
#include "station/folderlock.h"
#include "station/journal.h"
#include "station/journalfeed.h"
#include "station/playbackname.h"
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
    m_clockWatch = new ClockWatch(this);
    m_diskSpace = new DiskSpace(this);
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
    connect(m_recorder, &Recorder::audioRestored, this, [this] { addLine(lcRecorder(), tr("Audio restored"), false); });
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
    connect(m_schedule, &ScheduleController::logMessage, this, logAs(lcScheduler()));
    connect(m_housekeeper, &Housekeeper::logMessage, this, logAs(lcHousekeeper()));
    connect(m_trigger, &TriggerController::logMessage, this, logAs(lcTrigger()));
    connect(m_trigger, &TriggerController::triggerStateChanged, this, &Station::updateWish);
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
    m_feed->watch(m_recorder);
    m_feed->watch(m_housekeeper);
    m_feed->watch(m_silenceAlert);
    connect(m_audioWatch, &AudioWatch::audioBegan, m_feed, &JournalFeed::audioBegan);
    connect(m_audioWatch, &AudioWatch::audioLost, m_feed, &JournalFeed::audioLost);
    connect(m_audioWatch, &AudioWatch::audioReturned, m_feed, &JournalFeed::audioReturned);
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
    m_recorder->start(Reason::text(Reason::Manual));
}

void Station::stopRecording()
{
    m_manual = false;
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
    if (wasRecording) {
        m_recorder->stop(Reason::text(Reason::SettingsChanged));
        m_recorder->start(Reason::text(Reason::SettingsChanged));
    }
    m_trigger->reload();
    synchroniseAutomatic();
    log(tr("Settings saved"));
    updateWish();
    Q_EMIT settingsApplied();
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

void Station::updateWish()
{
    if (m_exiting)
        return;
    const RecordingWish wish =
        RecordingWish::decide(m_settings.autoMode, m_settings.schedule.isActive(QDateTime::currentDateTime()),
                              m_trigger->isActive(), m_manual);
    if (wish != std::exchange(m_wish, wish))
        m_feed->wishChanged(wish);
}

void Station::onStarted(const QString& reason)
{
    if (reason == QLatin1String(Reason::Manual))
        m_manual = true;
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
    updateWish();
}

void Station::onRecorderError(const QString& text)
{
    // The automatic mode tries a folder that belongs to another channel every 5 seconds.
    const bool repeated =
        text == m_refusal && m_sinceRefusalLine.isValid() && !m_sinceRefusalLine.hasExpired(RefusalLineMs);
    if (repeated)
        return;
    if (text == m_refusal)
        m_sinceRefusalLine.start();
    addLine(lcRecorder(), text, true);
}

void Station::onSilenceDetected(int seconds)
{
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

StationStatus Station::status() const
{
    const QDateTime now = QDateTime::currentDateTime();
    StationStatus status;
    status.version = QCoreApplication::applicationVersion();
    status.channel = Channel::name();
    status.recording = m_recorder->isRecording();
    status.recordingSince = m_startedAt;
    status.wish = m_wish;
    status.file = m_recorder->currentFilePath();
    status.leftDb = m_leftDb;
    status.rightDb = m_rightDb;
    status.source = m_recorder->sourceDescription();
    status.secondsSinceAudio = m_audioWatch->secondsSinceAudio();
    status.trigger = QLatin1String(!m_trigger->hasSource() ? "none" : m_trigger->isActive() ? "on" : "off");
    status.automatic = m_settings.autoMode;
    status.blockEnd = m_settings.autoMode ? m_settings.schedule.blockEnd(now) : QDateTime();
    status.freeBytes = m_diskSpace->freeBytes();
    status.copyEnabled = m_archiveCopy->isEnabled();
    status.copyBehind = m_archiveCopy->filesBehind();
    status.lastError = m_lastError;
    status.lastErrorAt = m_lastErrorAt;
    status.lastFile = m_lastFile;
    return status;
}
