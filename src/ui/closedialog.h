#pragma once

#include <QDialog>

#include <optional>

class QCheckBox;

/// Asks what closing the window means. Without a tray there is nothing to minimise to, and it asks about leaving only.
class CloseDialog : public QDialog {
    Q_OBJECT
public:
    /// As the settings store what the operator wants of the close button.
    enum Choice { Cancel = 0, Minimise = 1, Exit = 2 };

    /// What the setting general/closeAction (0 ask, 1 minimise, 2 exit) decides without asking, if it does.
    static std::optional<Choice> settled(int closeAction, bool hasTray);

    CloseDialog(bool hasTray, bool recording, QWidget* parent = nullptr);

    /// Valid once the dialog has ended.
    Choice choice() const { return m_choice; }
    /// Whether the choice shall hold from now on; never for Cancel.
    bool remember() const;

private:
    QCheckBox* m_remember;
    Choice m_choice = Cancel;
};
