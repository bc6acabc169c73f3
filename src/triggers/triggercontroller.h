#pragma once

#include "triggers/triggersettings.h"
#include "triggers/triggersource.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class Recorder;

/// Owns the trigger that the settings select and makes the recorder follow it, with a run-on time after its release.
/// In automatic mode the schedule has the last word: outside its hours a trigger event stops a recording.
///
/// A source that has started and is lost later is started again every 5 seconds. Meanwhile the trigger keeps the state
/// it had, and a recording goes on: audio that nobody wanted can be deleted, audio that is missing cannot be made. Once
/// it is back, a contact is read anew; commands and MIDI messages that were missed are not known.
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
    /// Whether a source is in use; also while it is lost.
    bool hasSource() const { return m_source != nullptr; }
    bool isActive() const { return m_active; }
    /// Whether reload() would only do again what is done: the settings are those of the last one, and the source is
    /// open or opened again by itself.
    bool isUpToDate() const { return m_source && m_settings == TriggerSettings::current(); }
    /// Whether the settings select a trigger, be it one that works or not.
    bool isConfigured() const { return m_source || !m_problem.isEmpty(); }
    /// What keeps the trigger from working, as a sentence; empty: nothing.
    QString problem() const { return m_problem; }
    /// Active, and known to be so.
    bool isOn() const { return m_active && m_problem.isEmpty(); }
    /// While paused, trigger events change the state and start nothing. Afterwards an active trigger records.
    void setPaused(bool paused);

public Q_SLOTS:
    void onTriggeredOn();
    void onTriggeredOff();
    void onHoldElapsed();

Q_SIGNALS:
    void logMessage(const QString& text);
    void triggerStateChanged(bool on);
    /// The line that logMessage() is about to tell is an error.
    void errorOccurred(const QString& text);
    void problemChanged();

private:
    void discardSource();
    void onSourceLine(const QString& text);
    void onSourceError(const QString& text);
    void setProblem(const QString& text);
    void onInputHeard();
    void reopen();
    void onReopened();
    void applyState();

    QPointer<Recorder> m_recorder;
    SourceFactory m_factory;
    std::function<QDateTime()> m_now;
    QPointer<TriggerSource> m_source;
    TriggerSettings m_settings; ///< of the last reload()
    QTimer m_hold;
    QTimer m_reopen; ///< runs while the source is lost
    QTimer m_reopened; ///< runs while the source may be back
    QString m_problem;
    bool m_active = false;
    bool m_paused = false;
    bool m_lost = false; ///< started once, closed since
};
