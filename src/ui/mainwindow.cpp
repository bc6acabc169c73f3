#include "ui/mainwindow.h"

#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "archive/housekeeper.h"
#include "capture/capturefactory.h"
#include "encode/codecs.h"
#include "engine/recorder.h"
#include "engine/schedulecontroller.h"
#include "net/silencealert.h"
#include "net/updatechecker.h"
#include "triggers/triggercontroller.h"
#include "ui/aboutdialog.h"
#include "ui/archivedialog.h"
#include "ui/capturediagnostics.h"
#include "ui/controlstyles.h"
#include "ui/loglist.h"
#include "ui/plainmessage.h"
#include "ui/schedulerdialog.h"
#include "ui/settingsdialog.h"
#include "ui/statustexts.h"
#include "ui/trayicon.h"
#include "ui/updateprompt.h"
#include "ui/versionlabel.h"
#include "ui/vfdpanel.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto StatusInterval = 30s;
constexpr auto StartupCheckDelay = 8s;
constexpr qint64 OverloadLineMs = 60'000;
constexpr int BalloonMs = 4000;
constexpr int SilenceBalloonMs = 10'000;

/// Modal to the window alone: a dialog that is modal to everything takes the clicks on the tray icon too.
int run(QDialog& dialog)
{
    dialog.setWindowModality(Qt::WindowModal);
    return dialog.exec();
}

} // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent), m_settings(AppSettings::instance())
{
    createEngines();
    setWindowTitle(tr("Tidewell"));
    setWindowIcon(QIcon(QStringLiteral(":/branding/icon.png")));
    buildCentralWidget();
    buildMenus();
    buildTray();
    buildStatusBar();
    connectEngines();
    startRunning();
}

MainWindow::~MainWindow()
{
    // The last segment must be closed and reported while everything it is reported to is still there.
    delete m_recorder;
    m_settings.geometry = saveGeometry();
    m_settings.save();
}

void MainWindow::createEngines()
{
    m_archive = new ArchiveIndex(this);
    m_archive->setFolder(m_settings.outputFolder);
    m_recorder = new Recorder(m_archive, this);
    m_schedule = new ScheduleController(m_recorder, this);
    m_housekeeper = new Housekeeper(m_archive, this);
    m_updates = new UpdateChecker(this);
    m_trigger = new TriggerController(m_recorder, this);

    m_silenceAlert = new SilenceAlert(this);
    m_diagnostics = new CaptureDiagnostics(m_recorder, this);
    m_updatePrompt = new UpdatePrompt(this);
}

void MainWindow::buildCentralWidget()
{
    m_panel = new VfdPanel;
    m_log = new LogList;
    m_log->setAccessibleName(tr("Log"));

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(m_panel);
    layout->addLayout(buildControls());
    layout->addWidget(m_log, 1);
    setCentralWidget(central);
    resize(900, 520);
}

QLayout* MainWindow::buildControls()
{
    m_recordButton = new QPushButton(tr("■ &Stop"));
    m_recordButton->setStyleSheet(ControlStyles::IdleRecordButton);
    const int stopWidth = m_recordButton->sizeHint().width();
    m_recordButton->setText(tr("● &Record"));
    // Its neighbours shall stay where they are when its text changes.
    m_recordButton->setMinimumWidth(qMax(stopWidth, m_recordButton->sizeHint().width()));
    m_recordButton->setText(tr("&Record"));
    connect(m_recordButton, &QPushButton::clicked, this, &MainWindow::toggleRecording);

    m_autoBox = new QCheckBox(tr("A&uto"));
    m_autoBox->setToolTip(tr("Record in the hours that are marked in the scheduler"));
    connect(m_autoBox, &QCheckBox::toggled, this, &MainWindow::toggleAuto);

    auto* scheduler = new QPushButton(tr("Sc&heduler"));
    scheduler->setStyleSheet(ControlStyles::Button);
    scheduler->setShortcut({}); // Alt+H is the help menu's; the schedule has Ctrl+H
    connect(scheduler, &QPushButton::clicked, this, &MainWindow::openScheduler);

    auto* archive = new QPushButton(tr("&Archive"));
    archive->setStyleSheet(ControlStyles::Button);
    connect(archive, &QPushButton::clicked, this, &MainWindow::openArchive);

    auto* row = new QHBoxLayout;
    for (QWidget* control : std::initializer_list<QWidget*>{m_recordButton, m_autoBox, scheduler, archive})
        row->addWidget(control);
    row->addStretch();
    return row;
}

void MainWindow::buildMenus()
{
    QMenu* menu = menuBar()->addMenu(tr("&Tidewell"));
    menu->addAction(tr("&Settings..."), QKeySequence(Qt::CTRL | Qt::Key_Comma), this, &MainWindow::openSettings);
    menu->addAction(tr("Sc&heduler..."), QKeySequence(Qt::CTRL | Qt::Key_H), this, &MainWindow::openScheduler);
    menu->addAction(tr("&Archive..."), QKeySequence(Qt::CTRL | Qt::Key_O), this, &MainWindow::openArchive);
    menu->addSeparator();
    menu->addAction(tr("Start/stop &recording"), QKeySequence(Qt::CTRL | Qt::Key_R), this,
                    &MainWindow::toggleRecording);
    menu->addSeparator();
    menu->addAction(tr("E&xit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, &MainWindow::exit);

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("Check for &Updates..."), this, &MainWindow::checkForUpdates);
    help->addAction(tr("Capture &Diagnostics"), this, &MainWindow::runCaptureDiagnostics);
    help->addAction(tr("&About Tidewell"), this, &MainWindow::showAbout);
}

/// The notification area may come after us, when both start with the session, and it may go: a window that was hidden
/// in it must not stay lost.
void MainWindow::lookForTray()
{
    if (!m_tray)
        buildTray();
    else if (!isVisible() && !TrayIcon::isAvailable())
        bringToFront();
}

void MainWindow::buildTray()
{
    m_tray = TrayIcon::create(this);
    if (!m_tray)
        return;
    if (m_recorder->isRecording())
        m_tray->setRecording(true);
    connect(m_tray, &TrayIcon::showRequested, this, &MainWindow::bringToFront);
    connect(m_tray, &TrayIcon::toggleRequested, this, &MainWindow::toggleRecording);
    connect(m_tray, &TrayIcon::exitRequested, this, &MainWindow::exit);
}

void MainWindow::buildStatusBar()
{
    statusBar()->showMessage(tr("Ready"));
    m_triggerLabel = new QLabel;
    statusBar()->addPermanentWidget(m_triggerLabel);

    auto* version = new VersionLabel;
    connect(version, &VersionLabel::linkActivated, this, &MainWindow::checkForUpdates);
    statusBar()->addPermanentWidget(version);
}

void MainWindow::connectEngines()
{
    connect(m_recorder, &Recorder::recordingChanged, this, &MainWindow::onRecordingChanged);
    connect(m_recorder, &Recorder::elapsedChanged, this, &MainWindow::onElapsedChanged);
    connect(m_recorder, &Recorder::channelLevels, this, &MainWindow::onChannelLevels);
    connect(m_recorder, &Recorder::logMessage, this, &MainWindow::appendLog);
    connect(m_recorder, &Recorder::errorOccurred, this, &MainWindow::appendError);
    connect(m_recorder, &Recorder::silenceDetected, this, &MainWindow::onSilenceDetected);
    connect(m_recorder, &Recorder::audioRestored, this, &MainWindow::onAudioRestored);
    connect(m_recorder, &Recorder::fileStarted, this,
            [this](const QString& path) { m_panel->setFileText(QFileInfo(path).fileName()); });
    connect(m_recorder, &Recorder::fileFinished, this, [this](const RecordInfo& info) {
        appendLog(tr("Saved %1 (%2)").arg(info.fileName, locale().formattedDataSize(info.bytes)));
    });
    connect(m_schedule, &ScheduleController::logMessage, this, &MainWindow::appendLog);
    connect(m_housekeeper, &Housekeeper::logMessage, this, &MainWindow::appendLog);
    connect(m_recorder, &Recorder::overloadDetected, this, &MainWindow::onOverload);
    connect(m_recorder, &Recorder::audioReceived, m_diagnostics, &CaptureDiagnostics::addBuffer);
    connect(m_recorder, &Recorder::channelLevels, m_diagnostics, &CaptureDiagnostics::addLevels);
    connect(m_trigger, &TriggerController::logMessage, this, &MainWindow::appendLog);
    connect(m_trigger, &TriggerController::triggerStateChanged, this, &MainWindow::showTriggerState);
    connect(m_updates, &UpdateChecker::updateAvailable, m_updatePrompt, &UpdatePrompt::onUpdateAvailable);
    connect(m_updates, &UpdateChecker::upToDate, m_updatePrompt, &UpdatePrompt::onUpToDate);
    connect(m_updates, &UpdateChecker::checkFailed, m_updatePrompt, &UpdatePrompt::onUpdateCheckFailed);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::refreshStatus);

    connect(m_silenceAlert, &SilenceAlert::logMessage, this, &MainWindow::appendLog);
    connect(m_updatePrompt, &UpdatePrompt::logMessage, this, &MainWindow::appendLog);
    connect(m_diagnostics, &CaptureDiagnostics::finished, this, &MainWindow::reportDiagnostics);
    // The end of the session may come either way.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_recorder->stop(tr("exit")); });
    qApp->installEventFilter(this);
}

void MainWindow::startRunning()
{
    m_statusTimer.start(StatusInterval);
    synchroniseAutoMode();
    appendLog(tr("Tidewell started"));
    restoreGeometry(m_settings.geometry);
    QTimer::singleShot(0, m_schedule, &ScheduleController::evaluate);
    if (m_settings.checkAtStartup && UpdateChecker::isDue(m_settings.lastCheck, QDateTime::currentDateTime()))
        QTimer::singleShot(StartupCheckDelay, m_updates, [this] { m_updates->check(true); });
    m_trigger->reload();
    showTriggerState();
}

void MainWindow::synchroniseAutoMode()
{
    const QSignalBlocker quiet(m_autoBox);
    m_autoBox->setChecked(m_settings.autoMode);
    m_schedule->setEnabled(m_settings.autoMode);
    m_panel->setAutoMode(m_settings.autoMode);
    showTriggerState();
    refreshStatus();
}

void MainWindow::showTriggerState()
{
    const bool configured = m_trigger->hasSource();
    m_panel->setTriggerState(configured, m_trigger->isActive());
    m_triggerLabel->setText(!configured             ? tr("Trigger: none")
                            : m_trigger->isActive() ? tr("Trigger: ON")
                                                    : tr("Trigger: off"));
}

void MainWindow::openSettings()
{
    const bool wasRecording = m_recorder->isRecording();
    SettingsDialog dialog(m_settings, this);
    if (run(dialog) != QDialog::Accepted)
        return;
    m_archive->setFolder(m_settings.outputFolder);
    if (wasRecording) {
        m_recorder->stop(tr("settings changed"));
        m_recorder->start(tr("settings changed"));
    }
    m_trigger->reload();
    synchroniseAutoMode();
    appendLog(tr("Settings saved"));
}

void MainWindow::openScheduler()
{
    SchedulerDialog dialog(m_settings.schedule, this);
    if (run(dialog) != QDialog::Accepted)
        return;
    m_settings.schedule = dialog.schedule();
    m_settings.save();
    appendLog(tr("Schedule updated"));
    m_schedule->evaluate();
    refreshStatus();
}

void MainWindow::openArchive()
{
    ArchiveDialog dialog(m_archive, this);
    run(dialog);
}

void MainWindow::toggleAuto(bool on)
{
    m_settings.autoMode = on;
    m_settings.save();
    m_schedule->setEnabled(on);
    m_panel->setAutoMode(on);
}

void MainWindow::toggleRecording()
{
    if (m_recorder->isRecording())
        m_recorder->stop(tr("manual"));
    else
        m_recorder->start(tr("manual"));
}

void MainWindow::onRecordingChanged(bool recording)
{
    m_panel->setRecording(recording);
    m_recordButton->setText(recording ? tr("■ &Stop") : tr("● &Record"));
    m_recordButton->setStyleSheet(recording ? ControlStyles::RecordingButton : ControlStyles::IdleRecordButton);
    statusBar()->showMessage(recording ? tr("Recording") : tr("Idle"));
    if (!recording) {
        m_panel->setElapsedMs(0);
        m_panel->resetLevels();
        m_panel->setFileText({});
    }
    if (m_tray)
        m_tray->setRecording(recording);
    refreshStatus();
}

void MainWindow::onElapsedChanged(qint64 ms)
{
    m_panel->setElapsedMs(ms);
}

void MainWindow::onChannelLevels(double leftPeakDb, double rightPeakDb)
{
    m_panel->setLevels(leftPeakDb, rightPeakDb);
}

void MainWindow::onSilenceDetected(int seconds)
{
    appendError(tr("Silence detected (longer than %n second(s))", nullptr, seconds));
    if (m_tray)
        m_tray->showWarning(tr("Silence detected on the recorded source."), SilenceBalloonMs);
    m_silenceAlert->send({seconds, m_recorder->sourceDescription(), m_recorder->currentFilePath()});
}

void MainWindow::onAudioRestored()
{
    appendLog(tr("Audio restored"));
}

void MainWindow::onOverload()
{
    m_panel->flashOverload();
    if (m_sinceOverloadLine.isValid() && !m_sinceOverloadLine.hasExpired(OverloadLineMs))
        return;
    m_sinceOverloadLine.start();
    appendLog(tr("Input above full scale - peaks are being limited. Reduce the input gain if this persists."));
}

void MainWindow::appendLog(const QString& text)
{
    m_log->append(text);
}

void MainWindow::appendError(const QString& text)
{
    m_log->appendError(text);
    // A start that fails has named its file already.
    if (!m_recorder->isRecording())
        m_panel->setFileText({});
}

void MainWindow::refreshStatus()
{
    lookForTray();
    // The sound server is asked for a device's name once, and only where that device is the source: it may be slow.
    if (CaptureBackend(m_settings.backend) == CaptureBackend::Loopback &&
        std::exchange(m_namedPlaybackId, m_settings.playbackId) != m_settings.playbackId)
        m_playbackLabel = StatusTexts::playbackLabel(m_settings.playbackId);
    m_panel->setSourceText(StatusTexts::source(m_settings, m_playbackLabel));
    m_panel->setCodecText(StatusTexts::codec(m_settings));
    m_panel->setSchedule(m_settings.schedule);
    m_panel->setDiskText(
        StatusTexts::diskLeft(StatusTexts::freeBytes(m_settings.outputFolder), estimatedBytesPerSecond(m_settings)));
}

void MainWindow::showAbout()
{
    AboutDialog dialog(this);
    run(dialog);
}

void MainWindow::runCaptureDiagnostics()
{
    if (m_diagnostics->isRunning())
        return;
    if (!m_recorder->isRecording()) {
        PlainMessage::show(
            this, QMessageBox::Information, tr("Capture Diagnostics"),
            tr("Start recording first - diagnostics measure the live capture path, which only runs while "
               "recording."));
        return;
    }
    m_diagnostics->start();
    appendLog(tr("Capture diagnostics: measuring for 10 seconds..."));
}

void MainWindow::reportDiagnostics(const QStringList& lines)
{
    for (const QString& line : lines)
        appendLog(line);
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    statusBar()->showMessage(tr("Diagnostics copied to the clipboard"));
}

void MainWindow::checkForUpdates()
{
    if (m_updates->isChecking())
        return;
    appendLog(tr("Checking for updates..."));
    m_updates->check(false);
}

void MainWindow::bringToFront()
{
    showNormal();
    raise();
    activateWindow();
    if (QWidget* dialog = QApplication::activeModalWidget())
        dialog->showNormal();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // Qt would ask the window whether it may be closed, and the window would hide or ask the operator: who ends the
    // session is not asked.
    if (watched == qApp && event->type() == QEvent::Quit) {
        exit();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::event(QEvent* event)
{
    // A pointer that passes over the menus would wipe "Recording" off the status bar.
    if (event->type() == QEvent::StatusTip)
        return true;
    return QMainWindow::event(event);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    // Hiding a window while it is told of its new state leaves some window managers confused.
    if (event->type() == QEvent::WindowStateChange && m_tray && !m_settings.taskbarButton && isMinimized())
        QTimer::singleShot(0, this, &QWidget::hide);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const auto settled = CloseDialog::settled(m_settings.closeAction, m_tray != nullptr);
    const CloseDialog::Choice choice = settled ? *settled : askHowToClose();
    event->setAccepted(choice == CloseDialog::Exit);
    if (choice == CloseDialog::Exit)
        exit();
    else if (choice == CloseDialog::Minimise)
        minimiseToTray();
}

CloseDialog::Choice MainWindow::askHowToClose()
{
    CloseDialog dialog(m_tray != nullptr, m_recorder->isRecording(), this);
    run(dialog);
    if (dialog.remember()) {
        m_settings.closeAction = dialog.choice();
        m_settings.save();
        appendLog(tr("Close button set to: %1")
                      .arg(dialog.choice() == CloseDialog::Minimise ? tr("minimise to tray") : tr("exit")));
    }
    return dialog.choice();
}

void MainWindow::minimiseToTray()
{
    hide();
    if (m_tray)
        m_tray->showInformation(m_recorder->isRecording() ? tr("Still recording. Double-click to reopen.")
                                                          : tr("Still running. Double-click to reopen."),
                                BalloonMs);
}

void MainWindow::exit()
{
    m_recorder->stop(tr("exit"));
    if (m_tray)
        m_tray->hide();
    // Not quit(): that would ask the window once more whether it may be closed.
    QCoreApplication::exit();
}
