#pragma once

#include <QBitArray>
#include <QDateTime>
#include <QString>

/// The weekly grid: for each of the 168 hours of a week, whether to record. Day 0 is Monday, hours are local time.
/// A day or hour out of range reads false and changes nothing.
class Schedule {
public:
    static constexpr int Days = 7;
    static constexpr int HoursPerDay = 24;
    static constexpr int Hours = Days * HoursPerDay;

    bool isOn(int day, int hour) const;
    void set(int day, int hour, bool on);
    void toggle(int day, int hour);
    void setAll(bool on);
    void setDay(int day, bool on);
    /// Sets one hour of the day on all seven days.
    void setHour(int hour, bool on);

    bool isEmpty() const;
    bool isFull() const;

    /// Whether this moment lies in a scheduled hour; false for an invalid one.
    bool isActive(const QDateTime& moment) const;
    /// The first hour boundary after `moment` that is not scheduled; a week and an hour after the start of its hour
    /// when the grid is full; invalid when the moment is not scheduled.
    QDateTime blockEnd(const QDateTime& moment) const;

    /// 168 characters, '1' for on, Monday 00 first.
    QString toString() const;
    /// Reads such a text; hours that a shorter one leaves out are off, and so is any character but '1'.
    static Schedule fromString(const QString& text);

    friend bool operator==(const Schedule&, const Schedule&) = default;

private:
    QBitArray m_bits = QBitArray(Hours);
};
