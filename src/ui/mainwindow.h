#pragma once

#include "ui/closedialog.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

class AppSettings;
class ArchiveIndex;
class CaptureDiagnostics;
class Housekeeper;
class LogList;
class QCheckBox;
class QLabel;
class QPushButton;
class Recorder;
class ScheduleController;
class SilenceAlert;
class TrayIcon;
class TriggerController;
class UpdateChecker;
class UpdatePrompt;
class VfdPanel;

/// The hub of the program: creates the engines, shows what they say and passes the operator's commands on to them.
/// The engines never call the window.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Ends the program without asking: a recording is stopped with the reason "exit" first.
    void exit();

private Q_SLOTS:
    void openScheduler();
    void openArchive();
    void openSettings();
    void toggleAuto(bool on);
    void toggleRecording();
    void onRecordingChanged(bool recording);
    void onElapsedChanged(qint64 ms);
    void onChannelLevels(double leftPeakDb, double rightPeakDb);
    void onSilenceDetected(int seconds);
    void onOverload();
    void onAudioRestored();
    void appendLog(const QString& text);
    void appendError(const QString& text);
    void refreshStatus();
    void showAbout();
    void runCaptureDiagnostics();
    void checkForUpdates();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createEngines();
    void buildCentralWidget();
    QLayout* buildControls();
    void buildMenus();
    void buildTray();
    void lookForTray();
    void buildStatusBar();
    void connectEngines();
    void startRunning();
    void synchroniseAutoMode();
    void showTriggerState();
    void bringToFront();
    CloseDialog::Choice askHowToClose();
    void minimiseToTray();
    void reportDiagnostics(const QStringList& lines);

    AppSettings& m_settings;
    // The engines, in the order of their creation.
    ArchiveIndex* m_archive = nullptr;
    Recorder* m_recorder = nullptr;
    ScheduleController* m_schedule = nullptr;
    Housekeeper* m_housekeeper = nullptr;
    UpdateChecker* m_updates = nullptr;
    TriggerController* m_trigger = nullptr;

    SilenceAlert* m_silenceAlert = nullptr;
    CaptureDiagnostics* m_diagnostics = nullptr;
    UpdatePrompt* m_updatePrompt = nullptr;
    TrayIcon* m_tray = nullptr; ///< null where the desktop has no notification area
    VfdPanel* m_panel = nullptr;
    QPushButton* m_recordButton = nullptr;
    QCheckBox* m_autoBox = nullptr;
    LogList* m_log = nullptr;
    QLabel* m_triggerLabel = nullptr;
    QTimer m_statusTimer;
    QByteArray m_namedPlaybackId; ///< the device that m_playbackLabel names
    QString m_playbackLabel;
    QElapsedTimer m_sinceOverloadLine; ///< invalid: none yet
};
