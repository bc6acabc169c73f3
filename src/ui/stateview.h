#pragma once

#include <QObject>

class QWidget;
class Station;
class StatusBar;
class TrayIcon;
class VfdPanel;

/// Shows the state of the station wherever it is to be seen: panel, status bar, tray icon and window title. In the
/// title and the tray only what somebody should come for; their usual texts say the rest.
class StateView : public QObject {
    Q_OBJECT
public:
    /// \param window whose title tells; becomes the parent.
    StateView(const Station* station, QWidget* window, VfdPanel* panel, StatusBar* status, TrayIcon* tray);

    /// Shows how long the disk lasts, and how far the second copy is.
    void showDisk();

private:
    void show();

    const Station* m_station;
    QWidget* m_window;
    VfdPanel* m_panel;
    StatusBar* m_status;
    TrayIcon* m_tray;
};
