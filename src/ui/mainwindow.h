#pragma once

#include <QMainWindow>

class AppSettings;
class ArchiveIndex;
class LogList;
class QLabel;
class QPushButton;
class Recorder;

/// The hub of the program: creates the engines, shows what they say and passes the operator's commands on to them.
/// The engines never call the window.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

public Q_SLOTS:
    /// Ends the program without asking: a recording is stopped with the reason "exit" first.
    void exit();

private Q_SLOTS:
    void toggleRecording();
    void onRecordingChanged(bool recording);
    void onElapsedChanged(qint64 ms);
    void onChannelLevels(double leftPeakDb, double rightPeakDb);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildCentralWidget();
    void buildMenus();
    void buildStatusBar();
    void connectEngines();
    bool confirmExit();

    AppSettings& m_settings;
    ArchiveIndex* m_archive;
    Recorder* m_recorder;

    QPushButton* m_recordButton = nullptr;
    QLabel* m_elapsedLabel = nullptr;
    QLabel* m_levelLabel = nullptr;
    QLabel* m_fileLabel = nullptr;
    LogList* m_log = nullptr;
    double m_leftDb = 0.0; ///< loudest since it was last shown
    double m_rightDb = 0.0;
    bool m_levelsAreNew = false;
    bool m_exitRequested = false;
};
