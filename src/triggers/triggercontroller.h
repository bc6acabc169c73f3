#pragma once

#include "triggers/triggersource.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class Recorder;

/// Owns the trigger that the settings select and makes the recorder follow it, with a run-on time after its release.
/// In automatic mode the schedule has the last word: outside its hours a trigger event stops a recording.
class TriggerController : public QObject {
    Q_OBJECT
public:
    using SourceFactory = std::function<TriggerSource*(int kind, QObject* parent)>;
    /// The trigger of this kind, stopped, or null for none.
    static TriggerSource* createSource(int kind, QObject* parent);

    /// Has no source until reload(). \param recorder not owned, may be null. \param now the local clock.
    explicit TriggerController(
        Recorder* recorder, QObject* parent = nullptr, SourceFactory factory = createSource,
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    /// Rebuilds the source from the settings. Ends a triggered state silently, without touching the recording.
    void reload();
    bool hasSource() const { return m_source != nullptr; }
    bool isActive() const { return m_active; }

public Q_SLOTS:
    void onTriggeredOn();
    void onTriggeredOff();
    void onHoldElapsed();

Q_SIGNALS:
    void logMessage(const QString& text);
    void triggerStateChanged(bool on);

private:
    void discardSource();
    void applyState();

    QPointer<Recorder> m_recorder;
    SourceFactory m_factory;
    std::function<QDateTime()> m_now;
    QPointer<TriggerSource> m_source;
    QTimer m_hold;
    bool m_active = false;
};
