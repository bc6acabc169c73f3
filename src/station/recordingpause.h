#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

/// The operator's wish that nothing be recorded for a while. It is not stored: a program that starts again records.
class RecordingPause : public QObject {
    Q_OBJECT
public:
    /// \param now the local clock.
    explicit RecordingPause(
        QObject* parent = nullptr, std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    bool isActive() const { return m_active; }
    /// When it ends by itself; invalid: not before end(), or it is not active.
    QDateTime until() const { return m_until; }
    /// One line for the operator; empty while it is not active.
    QString text() const;

    /// Begins one of this length, zero: until end(), or gives the present one a new length.
    void begin(std::chrono::minutes length);
    void end();
    /// Ends it if its time is over, by the clock or by the time that has passed, whichever is first: a clock that was
    /// set back must not make it longer, nor must a sleep of the computer. Called every second.
    void look();

Q_SIGNALS:
    /// It has begun, got another length, or ended.
    void changed(bool paused);

private:
    std::function<QDateTime()> m_now;
    bool m_active = false;
    QDateTime m_until;
    std::chrono::milliseconds m_length{0};
    QElapsedTimer m_since;
    QTimer m_tick; ///< runs while a time is set
};
