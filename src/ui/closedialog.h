#pragma once

#include <QDialog>

#include <optional>

class AppSettings;
class QCheckBox;

/// Asks what closing the window means. Without a tray there is nothing to minimise to, and it asks about leaving only.
class CloseDialog : public QDialog {
    Q_OBJECT
public:
    /// What the operator wants of the close button, by the numbers that the settings store.
    enum Choice { Cancel = 0, Minimise = 1, Exit = 2 };

    /// What the setting general/closeAction (0 ask, 1 minimise, 2 exit) decides without asking, if it does.
    static std::optional<Choice> choiceFromSetting(int closeAction, bool hasTray);

    CloseDialog(bool hasTray, bool recording, QWidget* parent = nullptr);

    /// Valid once the dialog has ended.
    Choice choice() const { return m_choice; }
    /// Keeps the choice if it shall hold from now on; Cancel never does.
    /// \return the line for the log; empty when nothing was kept.
    QString rememberIn(AppSettings& settings) const;

private:
    QCheckBox* m_remember;
    Choice m_choice = Cancel;
};
