#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

class QMenu;

/// The program's place in the notification area: says whether it records, and brings the window back.
class TrayIcon : public QObject {
    Q_OBJECT
public:
    /// Null where the desktop has no notification area.
    static TrayIcon* create(QObject* parent);
    ~TrayIcon() override;
    /// Whether the desktop has a notification area just now.
    static bool isAvailable() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    void setRecording(bool recording);
    void showInformation(const QString& text, int milliseconds);
    void showWarning(const QString& text, int milliseconds);
    void hide() { m_icon.hide(); }

Q_SIGNALS:
    void showRequested();
    void toggleRequested();
    void exitRequested();

private:
    explicit TrayIcon(QObject* parent);

    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon m_icon;
};
