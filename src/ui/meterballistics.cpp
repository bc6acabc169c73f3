#include "ui/meterballistics.h"

namespace {

constexpr double BarFallDb = 1.4;
constexpr double HoldFallDb = 0.7;
constexpr qint64 HoldMs = 1300;

void fall(std::array<double, 2>& levels, double db)
{
    for (double& level : levels)
        level = qMax(VfdGeometry::FloorDb, level - db);
}

} // namespace

void MeterBallistics::rise(double leftDb, double rightDb, qint64 now)
{
    const Pair peak{leftDb, rightDb};
    const bool isNewHold = leftDb >= m_hold[0] || rightDb >= m_hold[1];
    for (size_t channel = 0; channel < peak.size(); ++channel) {
        m_bar[channel] = qMax(m_bar[channel], peak[channel]);
        if (isNewHold)
            m_hold[channel] = qMax(m_hold[channel], peak[channel]);
    }
    if (isNewHold)
        m_heldSince = now;
}

void MeterBallistics::decay(qint64 now)
{
    fall(m_bar, BarFallDb);
    if (now - m_heldSince > HoldMs)
        fall(m_hold, HoldFallDb);
}

bool MeterBallistics::isAtRest() const
{
    return m_bar == Floor && m_hold == Floor;
}

VfdGeometry::MeterLights MeterBallistics::lights() const
{
    return {VfdGeometry::lights(m_bar[0], m_hold[0]), VfdGeometry::lights(m_bar[1], m_hold[1])};
}
