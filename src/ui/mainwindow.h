#pragma once

#include "ui/closedialog.h"

#include <QMainWindow>
#include <QTimer>

class AppSettings;
class CaptureDiagnostics;
class ControlBar;
class LogList;
class Recorder;
class Station;
class StateView;
class StatusBar;
class TrayIcon;
class UpdatePrompt;
class VfdPanel;

/// Shows a station, which it owns, and passes the operator's commands on to it.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    /// The station runs from now on.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    Station* station() const { return m_station; }

    /// Ends the program without asking: a recording is stopped with the reason "exit" first.
    void exit();
    void bringToFront();

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
    void buildCentralWidget();
    void buildMenus();
    void connectStation();
    void showSettings();
    void showTriggerState();
    CloseDialog::Choice askHowToClose();
    void minimiseToTray();
    void leave();

    AppSettings& m_settings;
    Station* m_station;
    Recorder* m_recorder; ///< the station's
    CaptureDiagnostics* m_diagnostics;
    UpdatePrompt* m_updatePrompt;
    TrayIcon* m_tray;
    VfdPanel* m_panel;
    ControlBar* m_controls;
    LogList* m_log;
    StatusBar* m_status;
    StateView* m_state;
    QTimer m_statusTimer;
};
