#pragma once

#include "station/alarm.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QList>

/// Alarms that wait to be sent one way, as a plain value that survives a restart. Sending is limited: what comes within
/// the interval after a message waits and goes out joined, with its true times.
class AlarmQueue {
    Q_DECLARE_TR_FUNCTIONS(AlarmQueue)
public:
    static constexpr qsizetype MostWaiting = 200;
    static constexpr qint64 KeptForMs = 24 * 3600 * 1000;

    explicit AlarmQueue(qint64 intervalMs) : m_intervalMs(intervalMs) {}

    /// When the queue is full the oldest one goes, and is counted.
    void add(const Alarm& alarm);
    bool isEmpty() const { return m_waiting.isEmpty(); }
    qsizetype size() const { return m_waiting.size(); }
    /// When the next message may go. \return ms since the epoch; in the past: now.
    qint64 dueMs(qint64 nowMs) const;
    /// A message is being sent with all that waits; counts for the limit, however it ends.
    /// \return what is in it.
    QList<Alarm> begin(qint64 nowMs);
    /// How that ended: what was in it is done with, or waits for longer and longer.
    void end(bool sent);
    /// Gives up what has waited for a day. \return how many.
    qsizetype dropExpired(qint64 nowMs);
    void clear();

    /// One line for a subject. \param alarms not empty.
    static QString title(const QList<Alarm>& alarms, qsizetype dropped);
    /// The sentences with their times, local.
    static QString text(const QList<Alarm>& alarms, qsizetype dropped);
    qsizetype dropped() const { return m_dropped; }

    QJsonObject toJson() const;
    /// What cannot be read is left out.
    void readJson(const QJsonObject& object);
    static QJsonObject toJson(const Alarm& alarm);

private:
    qint64 m_intervalMs;
    QList<Alarm> m_waiting; ///< oldest first
    qsizetype m_underWay = 0; ///< the first ones, while a message is being sent
    qsizetype m_dropped = 0; ///< that found no room; told with the next message
    qint64 m_lastMs = 0; ///< when the last message began, since the epoch; 0: never
    int m_failures = 0; ///< in a row
};
