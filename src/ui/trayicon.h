#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>

class QMenu;

/// The program's place in the notification area: says whether it records, and brings the window back. The area may
/// appear after the program, when both start with the session; it may go; and a desktop may have none.
class TrayIcon : public QObject {
    Q_OBJECT
public:
    explicit TrayIcon(QObject* parent);
    ~TrayIcon() override;

    /// Shows the icon if there is an area by now. \return false when the icon was shown and its area has gone.
    bool look();
    /// Whether the icon has been shown.
    bool isShown() const { return m_icon != nullptr; }

    void setRecording(bool recording);
    /// Shows this instead of what it usually says, and a red icon; an empty text ends that.
    void setAlarm(const QString& text);
    // While no icon is shown, these do nothing.
    void warnOfSilence();
    /// The window was hidden, and the program goes on.
    void tellWhereItIs(bool recording);
    void hide();

Q_SIGNALS:
    void showRequested();
    void toggleRequested();
    void exitRequested();

private:
    void create();
    void showState();

    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon; ///< null: not shown yet
    QString m_alarm;
    std::optional<bool> m_recording; ///< what the icon shows; nothing: it was not told yet
};
