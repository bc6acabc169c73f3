#include "ui/mainwindow.h"

#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "ui/closedialog.h"
#include "ui/loglist.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include <utility>

namespace {

const QString IdleButtonStyle = QStringLiteral(
    "QPushButton {  padding: 6px 18px;  border: 1px solid #2e7d4f;  border-radius: 4px;  background: #14361f;  "
    "color: #6ee7a0;  font-weight: 700;}QPushButton:hover  { background: #1a4a2a; border-color: #6ee7a0; }"
    "QPushButton:pressed{ background: #0e2415; }");
const QString RecordingButtonStyle = QStringLiteral(
    "QPushButton {  padding: 6px 18px;  border: 1px solid #d0403a;  border-radius: 4px;  background: #4a1512;  "
    "color: #ff8a80;  font-weight: 700;}QPushButton:hover  { background: #5e1a16; border-color: #ff4838; }"
    "QPushButton:pressed{ background: #350d0b; }");

QString clockText(qint64 ms)
{
    const auto twoDigits = [](qint64 value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("%1:%2:%3")
        .arg(twoDigits(ms / 3'600'000), twoDigits(ms / 60'000 % 60), twoDigits(ms / 1000 % 60));
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_settings(AppSettings::instance()), m_archive(new ArchiveIndex(this))
{
    m_archive->setFolder(m_settings.outputFolder);
    m_recorder = new Recorder(m_archive, this);

    setWindowTitle(tr("Tidewell"));
    setWindowIcon(QIcon(QStringLiteral(":/branding/icon.png")));
    buildCentralWidget();
    buildMenus();
    buildStatusBar();
    connectEngines();
    onRecordingChanged(false);
    statusBar()->showMessage(tr("Ready"));

    m_log->append(tr("Tidewell started"));
    if (!m_settings.geometry.isEmpty())
        restoreGeometry(m_settings.geometry);
}

MainWindow::~MainWindow()
{
    // The last segment must be closed and reported while everything it is reported to is still there.
    delete m_recorder;
    m_settings.geometry = saveGeometry();
    m_settings.save();
}

void MainWindow::buildCentralWidget()
{
    m_recordButton = new QPushButton;
    connect(m_recordButton, &QPushButton::clicked, this, &MainWindow::toggleRecording);
    m_elapsedLabel = new QLabel;
    m_levelLabel = new QLabel;
    // A fixed place: a text that grows and shrinks five times a second would lay out the whole row each time.
    m_levelLabel->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("-00 / -00 dBFS0")));

    auto* controls = new QHBoxLayout;
    controls->addWidget(m_recordButton);
    controls->addWidget(m_elapsedLabel);
    controls->addWidget(m_levelLabel);
    controls->addStretch();

    m_log = new LogList;
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->addLayout(controls);
    layout->addWidget(m_log);
    setCentralWidget(central);
    resize(720, 420);
}

void MainWindow::buildMenus()
{
    QMenu* menu = menuBar()->addMenu(tr("&Tidewell"));
    menu->addAction(tr("Start/stop &recording"), this, &MainWindow::toggleRecording);
    menu->addSeparator();
    menu->addAction(tr("E&xit"), this, [this] {
        m_exitRequested = true;
        close();
    });
}

void MainWindow::buildStatusBar()
{
    m_fileLabel = new QLabel;
    m_fileLabel->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(m_fileLabel);
    statusBar()->addPermanentWidget(new QLabel(QStringLiteral("v") + QCoreApplication::applicationVersion()));
}

void MainWindow::connectEngines()
{
    connect(m_recorder, &Recorder::recordingChanged, this, &MainWindow::onRecordingChanged);
    connect(m_recorder, &Recorder::elapsedChanged, this, &MainWindow::onElapsedChanged);
    connect(m_recorder, &Recorder::channelLevels, this, &MainWindow::onChannelLevels);
    connect(m_recorder, &Recorder::logMessage, m_log, &LogList::append);
    connect(m_recorder, &Recorder::errorOccurred, m_log, &LogList::appendError);
    connect(m_recorder, &Recorder::fileStarted, this,
            [this](const QString& path) { m_fileLabel->setText(QFileInfo(path).fileName()); });
    connect(m_recorder, &Recorder::fileFinished, this, [this](const RecordInfo& info) {
        m_log->append(tr("Saved %1 (%2)").arg(info.fileName, locale().formattedDataSize(info.bytes)));
    });
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
    m_recordButton->setText(recording ? tr("■ &Stop") : tr("● &Record"));
    m_recordButton->setStyleSheet(recording ? RecordingButtonStyle : IdleButtonStyle);
    statusBar()->showMessage(recording ? tr("Recording") : tr("Idle"));
    if (!recording) {
        m_levelsAreNew = false;
        onElapsedChanged(0);
        m_levelLabel->clear();
        m_fileLabel->clear();
    }
}

void MainWindow::onElapsedChanged(qint64 ms)
{
    m_elapsedLabel->setText(clockText(ms));
    if (std::exchange(m_levelsAreNew, false))
        m_levelLabel->setText(tr("%1 / %2 dBFS").arg(m_leftDb, 0, 'f', 0).arg(m_rightDb, 0, 'f', 0));
}

/// Fifty readings come in a second; they are shown with the clock, five times a second.
void MainWindow::onChannelLevels(double leftPeakDb, double rightPeakDb)
{
    m_leftDb = m_levelsAreNew ? qMax(m_leftDb, leftPeakDb) : leftPeakDb;
    m_rightDb = m_levelsAreNew ? qMax(m_rightDb, rightPeakDb) : rightPeakDb;
    m_levelsAreNew = true;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const bool leave = m_exitRequested || m_settings.closeAction != 0 || confirmExit();
    event->setAccepted(leave);
    if (leave)
        exit();
}

bool MainWindow::confirmExit()
{
    CloseDialog dialog(false, m_recorder->isRecording(), this);
    dialog.exec();
    if (dialog.choice() != CloseDialog::Exit)
        return false;
    if (dialog.remember()) {
        m_settings.closeAction = 2;
        m_settings.save();
        m_log->append(tr("Close button set to: %1").arg(tr("exit")));
    }
    return true;
}

void MainWindow::exit()
{
    m_recorder->stop(tr("exit"));
    // Not quit(): that would ask the window once more whether it may be closed.
    QCoreApplication::exit();
}
