#include "station/levelwatch.h"

#include <algorithm>

void LevelWatch::add(double leftDb, double rightDb, double thresholdDb)
{
    m_leftSounds |= leftDb > thresholdDb;
    m_rightSounds |= rightDb > thresholdDb;

    const double peakDb = std::max(leftDb, rightDb);
    const bool isFirst = m_highestDb < m_lowestDb;
    m_lowestDb = isFirst ? peakDb : std::min(m_lowestDb, peakDb);
    m_highestDb = isFirst ? peakDb : std::max(m_highestDb, peakDb);
    if (m_highestDb - m_lowestDb >= StuckRangeDb) {
        m_moved = true;
        m_lowestDb = m_highestDb = peakDb;
    }
}

LevelWatch::Verdict LevelWatch::look()
{
    if (!m_leftSounds && !m_rightSounds) {
        m_verdict.levelStuck = m_verdict.levelStuck && !m_moved;
    } else {
        const bool leftDead = !m_leftSounds;
        // Now the one and now the other is stereo, not a cable.
        const bool another = m_verdict.channelDead && leftDead != m_leftDead;
        m_verdict = {m_leftSounds != m_rightSounds && !another, !m_moved};
        m_leftDead = leftDead;
    }
    m_leftSounds = m_rightSounds = m_moved = false;
    return m_verdict;
}
