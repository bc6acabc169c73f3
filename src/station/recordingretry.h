#pragma once

#include "station/stationstatus.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class Recorder;

/// Starts a recording again that an error has ended and that is still wanted: at once, and then every 5 seconds until
/// it runs or nobody wants it any more. Only what had delivered audio: a start that never worked is for whoever asked
/// for it to try again. In automatic mode the schedule starts it again; the first attempt, at once, is made here.
class RecordingRetry : public QObject {
    Q_OBJECT
public:
    /// \param wish what is wanted just now.
    RecordingRetry(Recorder* recorder, std::function<RecordingWish()> wish, QObject* parent = nullptr);

    /// Whether a recording ended by an error and has not begun again, although it is wanted.
    bool isTrying() const { return m_trying; }
    /// Starts anew what ran a moment ago and was interrupted; if that fails, it is tried again like after an error.
    void restart(const QString& reason);
    /// It works again, or the operator has decided otherwise.
    void cancel();
    /// To be called when the wish has changed.
    void reconsider();

Q_SIGNALS:
    void changed();

private:
    void onStopped(const QString& reason);
    void attempt();
    void setTrying(bool trying);

    Recorder* m_recorder;
    std::function<RecordingWish()> m_wish;
    QTimer m_timer;
    QElapsedTimer m_sinceEnd; ///< of the last run that an error ended; invalid: there was none
    bool m_goesOn = false; ///< what is being started had delivered audio before
    bool m_trying = false;
};
