#pragma once

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class Recorder;

/// Makes the recorder follow the weekly schedule while automatic mode is on: looks every 5 seconds, and starts or stops
/// it with the reason "scheduler". A start that failed is tried again at the next look.
class ScheduleController : public QObject {
    Q_OBJECT
public:
    /// Enabled as the settings say (state/auto); looks for the first time after 5 seconds.
    /// \param recorder not owned, may be null. \param now the local clock.
    explicit ScheduleController(
        Recorder* recorder, QObject* parent = nullptr,
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    bool isEnabled() const { return m_enabled; }
    /// Switching on looks at once; switching off leaves a running recording alone.
    void setEnabled(bool on);
    /// While paused, no look does anything; the end of a pause looks at once.
    void setPaused(bool paused);
    /// Looks now, and acts even when nothing seems to have changed. To be called after the grid was edited.
    void forceEvaluate();

public Q_SLOTS:
    void evaluate();

Q_SIGNALS:
    void logMessage(const QString& text);

private:
    QPointer<Recorder> m_recorder;
    std::function<QDateTime()> m_now;
    QTimer m_timer;
    bool m_enabled;
    bool m_paused = false;
    bool m_lastWanted = false;
    bool m_evaluated = false; ///< m_lastWanted holds what the last look found
};
