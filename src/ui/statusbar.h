#pragma once

#include <QStatusBar>

class QLabel;

/// The window's status bar: a message, the state of the trigger, and the version, which looks for a newer one
/// when it is clicked.
class StatusBar : public QStatusBar {
    Q_OBJECT
public:
    explicit StatusBar(QWidget* parent = nullptr);

    void showTrying(bool trying);
    /// \param problem what keeps it from working, for the tool tip; empty: nothing.
    void showTrigger(bool configured, bool active, const QString& problem);

Q_SIGNALS:
    void updateCheckRequested();

private:
    QLabel* m_trying; ///< shown while a recording is being started again
    QLabel* m_trigger;
};
