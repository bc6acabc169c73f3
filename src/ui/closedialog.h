#pragma once

#include <QDialog>

class QCheckBox;

/// Asks what closing the window means. Without a tray there is nothing to minimise to, and it asks about leaving only.
class CloseDialog : public QDialog {
    Q_OBJECT
public:
    enum Choice { Cancel, Minimise, Exit };

    CloseDialog(bool hasTray, bool recording, QWidget* parent = nullptr);

    /// Valid once the dialog has ended.
    Choice choice() const { return m_choice; }
    /// Whether the choice shall hold from now on; never for Cancel.
    bool remember() const;

private:
    QCheckBox* m_remember;
    Choice m_choice = Cancel;
};
