#pragma once

#include <QDialog>

struct UpdateInfo;

/// Tells of a newer version. What the service sent is shown as text, and of its links only web addresses can be opened.
class UpdateDialog : public QDialog {
    Q_OBJECT
public:
    explicit UpdateDialog(const UpdateInfo& info, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The operator does not want to hear of this version again.
    void skipRequested();
};
