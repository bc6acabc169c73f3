#pragma once

#include <QObject>

class QWidget;
class UpdateChecker;
struct UpdateInfo;

/// Shows the operator what an update check found; the station logs it. A silent check speaks up only for a version that
/// was not skipped.
class UpdatePrompt : public QObject {
    Q_OBJECT
public:
    /// \param window the parent of this object and of its dialogs.
    UpdatePrompt(const UpdateChecker* checker, QWidget* window);

public Q_SLOTS:
    void onUpdateAvailable(const UpdateInfo& info, bool silent);
    void onUpToDate(bool silent);
    void onUpdateCheckFailed(const QString& reason, bool silent);

Q_SIGNALS:
    void logMessage(const QString& text);

private:
    QWidget* m_window;
};
