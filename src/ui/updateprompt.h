#pragma once

#include <QObject>

class QWidget;
struct UpdateInfo;

/// Tells the operator what an update check found. A silent check speaks up only for a version that was not skipped.
class UpdatePrompt : public QObject {
    Q_OBJECT
public:
    /// \param window the parent of its dialogs, and its own.
    explicit UpdatePrompt(QWidget* window);

public Q_SLOTS:
    void onUpdateAvailable(const UpdateInfo& info, bool silent);
    void onUpToDate(bool silent);
    void onUpdateCheckFailed(const QString& reason, bool silent);

Q_SIGNALS:
    void logMessage(const QString& text);

private:
    QWidget* m_window;
};
