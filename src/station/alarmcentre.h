#pragma once

#include "station/alarmboard.h"
#include "station/levelwatch.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class AlarmOutbox;
class Heartbeat;
class Recorder;
struct StationStatus;

/// Looks at the state of the station once a second, since an alarm is about what lasts, and has alarms raised, logged
/// and sent.
class AlarmCentre : public QObject {
    Q_OBJECT
public:
    /// What it asks of the station.
    struct Station {
        std::function<StationStatus()> state; ///< cheap
        std::function<StationStatus()> status; ///< goes with each message
        std::function<bool()> isAudioWritten;
    };
    AlarmCentre(Recorder* recorder, Station station, QObject* parent = nullptr);

    AlarmBoard* board() const { return m_board; }
    AlarmOutbox* outbox() const { return m_outbox; }
    /// What the levels of this run say, as of the last look.
    LevelWatch::Verdict levels() const { return m_verdict; }

    void begin();
    void settingsChanged();
    /// To be called when something has happened that should not wait for the next look.
    void look();
    /// The program ends: what ends with it is no alarm.
    void stop();

Q_SIGNALS:
    void logMessage(const QString& text);
    void errorOccurred(const QString& text);
    /// What the state says to somebody at the door has changed.
    void stateChanged();

private:
    void logAlarm(const Alarm& alarm);

    Recorder* m_recorder;
    Station m_station;
    AlarmBoard* m_board;
    AlarmOutbox* m_outbox;
    Heartbeat* m_heartbeat;
    LevelWatch m_levels;
    LevelWatch::Verdict m_verdict;
    QElapsedTimer m_clock;
    QTimer m_look;
    QString m_shown; ///< as stateChanged() last told
};
