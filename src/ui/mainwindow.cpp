#include "ui/mainwindow.h"

#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/diskspace.h"
#include "station/journal.h"
#include "station/playbackname.h"
#include "station/recordingpause.h"
#include "station/station.h"
#include "triggers/triggercontroller.h"
#include "ui/aboutdialog.h"
#include "ui/archivedialog.h"
#include "ui/capturediagnostics.h"
#include "ui/channelmenu.h"
#include "ui/controlbar.h"
#include "ui/loglist.h"
#include "ui/pausebutton.h"
#include "ui/schedulerdialog.h"
#include "ui/settingsdialog.h"
#include "ui/stateview.h"
#include "ui/statusbar.h"
#include "ui/statustexts.h"
#include "ui/theme.h"
#include "ui/trayicon.h"
#include "ui/updateprompt.h"
#include "ui/vfdpanel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QIcon>
#include <QMenuBar>
#include <QVBoxLayout>

namespace {

constexpr int StatusMs = 30'000;

/// Modal to the window alone: a dialog that is modal to everything takes the clicks on the tray icon too.
int run(QDialog& dialog)
{
    dialog.setWindowModality(Qt::WindowModal);
    return dialog.exec();
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent),
      m_settings(AppSettings::instance()),
      m_station(new Station(this)),
      m_recorder(m_station->recorder()),
      m_diagnostics(new CaptureDiagnostics(m_recorder, this)),
      m_updatePrompt(new UpdatePrompt(m_station->updates(), this)),
      m_tray(new TrayIcon(this)),
      m_panel(new VfdPanel),
      m_controls(new ControlBar),
      m_log(new LogList),
      m_status(new StatusBar),
      m_state(new StateView(m_station, this, m_panel, m_status, m_tray))
{
    setWindowTitle(Channel::named(tr("Tidewell")));
    setWindowIcon(QIcon(QStringLiteral(":/branding/icon.png")));
    buildCentralWidget();
    buildMenus();
    setStatusBar(m_status);
    connectStation();
    m_statusTimer.start(StatusMs);
    m_station->begin();
    restoreGeometry(m_settings.geometry);
}

MainWindow::~MainWindow()
{
    // While everything that it reports its end to is still there.
    delete m_station;
    m_settings.geometry = saveGeometry();
    m_settings.save();
}

void MainWindow::buildCentralWidget()
{
    m_controls->addBesideRecord(new PauseButton(m_station));
    connect(m_controls, &ControlBar::recordClicked, this, &MainWindow::toggleRecording);
    connect(m_controls, &ControlBar::automaticToggled, this, &MainWindow::toggleAuto);
    connect(m_controls, &ControlBar::schedulerClicked, this, &MainWindow::openScheduler);
    connect(m_controls, &ControlBar::archiveClicked, this, &MainWindow::openArchive);

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->addWidget(m_panel);
    layout->addWidget(m_controls);
    layout->addWidget(m_log, 1);
    setCentralWidget(central);
    resize(900, 520);
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
    ChannelMenu::addTo(menu);

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("Check for &Updates..."), this, &MainWindow::checkForUpdates);
    help->addAction(tr("Capture &Diagnostics"), this, &MainWindow::runCaptureDiagnostics);
    help->addAction(tr("&About Tidewell"), this, &MainWindow::showAbout);
}

void MainWindow::connectStation()
{
    connect(m_recorder, &Recorder::recordingChanged, this, &MainWindow::onRecordingChanged);
    connect(m_recorder, &Recorder::elapsedChanged, this, &MainWindow::onElapsedChanged);
    connect(m_recorder, &Recorder::channelLevels, this, &MainWindow::onChannelLevels);
    connect(m_recorder, &Recorder::silenceDetected, this, &MainWindow::onSilenceDetected);
    connect(m_recorder, &Recorder::fileStarted, this,
            [this](const QString& path) { m_panel->setFileText(QFileInfo(path).fileName()); });
    connect(m_recorder, &Recorder::overloadDetected, this, &MainWindow::onOverload);
    connect(m_diagnostics, &CaptureDiagnostics::logMessage, m_station, &Station::log);
    connect(m_diagnostics, &CaptureDiagnostics::finished, this,
            [this] { m_status->showMessage(tr("Diagnostics copied to the clipboard")); });
    connect(m_station->trigger(), &TriggerController::triggerStateChanged, this, &MainWindow::showTriggerState);
    connect(m_station->trigger(), &TriggerController::problemChanged, this, &MainWindow::showTriggerState);
    connect(m_station->pause(), &RecordingPause::changed, this, &MainWindow::refreshStatus);
    connect(m_updatePrompt, &UpdatePrompt::logMessage, m_station, &Station::log);

    connect(m_station, &Station::lineLogged, this, &MainWindow::appendLog);
    connect(m_station, &Station::errorLogged, this, &MainWindow::appendError);
    connect(m_station, &Station::errorAmended, m_log, &LogList::amend);
    connect(m_station, &Station::settingsApplied, this, &MainWindow::showSettings);
    connect(m_station, &Station::exitRequested, this, &MainWindow::leave);
    connect(m_station->diskSpace(), &DiskSpace::changed, this, &MainWindow::refreshStatus);
    connect(m_station->playbackName(), &PlaybackName::changed, this, &MainWindow::refreshStatus);
    connect(m_log, &LogList::earlierWanted, m_station->journal(), &Journal::readLinesBefore);
    connect(m_station->journal(), &Journal::linesRead, m_log, &LogList::prepend);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::refreshStatus);

    connect(m_tray, &TrayIcon::showRequested, this, &MainWindow::bringToFront);
    connect(m_tray, &TrayIcon::toggleRequested, this, &MainWindow::toggleRecording);
    connect(m_tray, &TrayIcon::exitRequested, this, &MainWindow::exit);
    connect(m_status, &StatusBar::updateCheckRequested, this, &MainWindow::checkForUpdates);
    qApp->installEventFilter(this);
}

void MainWindow::showSettings()
{
    Theme::apply(m_settings.theme);
    m_controls->setAutomatic(m_settings.autoMode);
    m_panel->setAutoMode(m_settings.autoMode);
    showTriggerState();
    refreshStatus();
}

void MainWindow::showTriggerState()
{
    const TriggerController* trigger = m_station->trigger();
    m_panel->setTriggerState(trigger->isConfigured(), trigger->isOn());
    m_status->showTrigger(trigger->isConfigured(), trigger->isOn(), trigger->problem());
}

void MainWindow::openSettings()
{
    const bool wasRecording = m_recorder->isRecording();
    SettingsDialog dialog(m_settings, this);
    if (run(dialog) == QDialog::Accepted)
        m_station->applySettings(wasRecording);
}

void MainWindow::openScheduler()
{
    SchedulerDialog dialog(m_settings.schedule, this);
    if (run(dialog) == QDialog::Accepted)
        m_station->setSchedule(dialog.schedule());
}

void MainWindow::openArchive()
{
    ArchiveDialog dialog(m_station->archive(), this, m_station->archiveCopy());
    connect(&dialog, &ArchiveDialog::filesDeleted, m_station, &Station::onFilesDeleted);
    run(dialog);
}

void MainWindow::toggleAuto(bool on)
{
    m_station->setAutomatic(on);
}

void MainWindow::toggleRecording()
{
    m_station->toggleRecording();
}

void MainWindow::onRecordingChanged(bool recording)
{
    m_panel->setRecording(recording);
    m_controls->setRecording(recording);
    m_status->showMessage(recording ? tr("Recording") : tr("Idle"));
    if (!recording) {
        m_panel->setElapsedMs(0);
        m_panel->resetLevels();
        m_panel->setFileText({});
    }
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

void MainWindow::onSilenceDetected(int)
{
    m_tray->warnOfSilence();
}

void MainWindow::onOverload()
{
    m_panel->flashOverload();
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
    // A window that was hidden in a notification area must not stay lost with it.
    if (!m_tray->look() && !isVisible())
        bringToFront();
    m_panel->setSourceText(StatusTexts::source(m_settings, m_station->playbackName()->name(),
                                               m_recorder->hasHeard() ? m_recorder->sourceDescription() : QString()));
    m_panel->setCodecText(StatusTexts::codec(m_settings));
    m_panel->setSchedule(m_settings.schedule);
    m_panel->setIdleText(m_station->pause()->text());
    m_state->showDisk();
}

void MainWindow::showAbout()
{
    AboutDialog dialog(this);
    run(dialog);
}

void MainWindow::runCaptureDiagnostics()
{
    m_diagnostics->run(this);
}

void MainWindow::checkForUpdates()
{
    m_station->checkForUpdates();
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
    if (event->type() == QEvent::WindowStateChange && m_tray->isShown() && !m_settings.taskbarButton && isMinimized())
        QTimer::singleShot(0, this, &QWidget::hide);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const auto settled = CloseDialog::choiceFromSetting(m_settings.closeAction, m_tray->isShown());
    const CloseDialog::Choice choice = settled ? *settled : askHowToClose();
    event->setAccepted(choice == CloseDialog::Exit);
    if (choice == CloseDialog::Exit)
        exit();
    else if (choice == CloseDialog::Minimise)
        minimiseToTray();
}

CloseDialog::Choice MainWindow::askHowToClose()
{
    CloseDialog dialog(m_tray->isShown(), m_recorder->isRecording(), this);
    run(dialog);
    if (const QString line = dialog.rememberIn(m_settings); !line.isEmpty())
        m_station->log(line);
    return dialog.choice();
}

void MainWindow::minimiseToTray()
{
    hide();
    m_tray->tellWhereItIs(m_recorder->isRecording());
}

void MainWindow::exit()
{
    m_station->exit();
}

void MainWindow::leave()
{
    m_tray->hide();
    // Not quit(): that would ask the window once more whether it may be closed.
    QCoreApplication::exit();
}
