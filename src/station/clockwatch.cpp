#include "station/clockwatch.h"

#include <QDateTime>

#include <chrono>
#include <cstdlib>
#include <utility>

ClockWatch::Clocks ClockWatch::Clocks::system()
{
    return {QDateTime::currentMSecsSinceEpoch, [] {
                return qint64(std::chrono::duration_cast<std::chrono::milliseconds>(
                                  std::chrono::steady_clock::now().time_since_epoch())
                                  .count());
            }};
}

ClockWatch::ClockWatch(QObject* parent, Clocks clocks) : QObject(parent), m_clocks(std::move(clocks))
{
    look();
}

void ClockWatch::look()
{
    const qint64 difference = m_clocks.wall() - m_clocks.monotonic();
    const qint64 before = std::exchange(m_difference, difference).value_or(difference);
    if (std::abs(difference - before) > ToleratedMs)
        Q_EMIT clockSet(difference - before);
}
