#include "settings/schedule.h"

namespace {

/// Bit of one hour of the week, -1 when there is no such hour.
int bitOf(int day, int hour)
{
    const bool valid = day >= 0 && day < Schedule::Days && hour >= 0 && hour < Schedule::HoursPerDay;
    return valid ? day * Schedule::HoursPerDay + hour : -1;
}

} // namespace

bool Schedule::isOn(int day, int hour) const
{
    const int bit = bitOf(day, hour);
    return bit >= 0 && m_bits.testBit(bit);
}

void Schedule::set(int day, int hour, bool on)
{
    if (const int bit = bitOf(day, hour); bit >= 0)
        m_bits.setBit(bit, on);
}

void Schedule::toggle(int day, int hour)
{
    set(day, hour, !isOn(day, hour));
}

void Schedule::setAll(bool on)
{
    m_bits.fill(on);
}

void Schedule::setDay(int day, bool on)
{
    for (int hour = 0; hour < HoursPerDay; ++hour)
        set(day, hour, on);
}

void Schedule::setHour(int hour, bool on)
{
    for (int day = 0; day < Days; ++day)
        set(day, hour, on);
}

bool Schedule::isEmpty() const
{
    return m_bits.count(true) == 0;
}

bool Schedule::isFull() const
{
    return m_bits.count(true) == Hours;
}

bool Schedule::isActive(const QDateTime& moment) const
{
    return moment.isValid() && isOn(moment.date().dayOfWeek() - 1, moment.time().hour());
}

QDateTime Schedule::blockEnd(const QDateTime& moment) const
{
    if (!isActive(moment))
        return {};
    QDateTime end = moment;
    end.setTime(QTime(moment.time().hour(), 0));
    // An hour that is on is followed by at most a week of hours that are on; then the grid repeats.
    for (int step = 0; step < Hours; ++step) {
        end = end.addSecs(3600);
        if (!isActive(end))
            return end;
    }
    return end.addSecs(3600);
}

QString Schedule::toString() const
{
    QString text(Hours, u'0');
    for (int bit = 0; bit < Hours; ++bit) {
        if (m_bits.testBit(bit))
            text[bit] = u'1';
    }
    return text;
}

Schedule Schedule::fromString(const QString& text)
{
    Schedule schedule;
    for (int bit = 0; bit < qMin(int(text.size()), Hours); ++bit)
        schedule.m_bits.setBit(bit, text.at(bit) == u'1');
    return schedule;
}
