#pragma once

/// Notices a channel that is dead while the other one is not, and a level that does not move. For how long that must
/// last before it is news is decided elsewhere.
class LevelWatch {
public:
    /// A level that stays within this range does not move, dB.
    static constexpr double StuckRangeDb = 3.0;

    /// What the readings since the last look say.
    struct Verdict {
        bool channelDead = false; ///< only one of the two channels has sound
        bool levelStuck = false; ///< there is sound, and its level has not moved
        friend bool operator==(const Verdict&, const Verdict&) = default;
    };

    /// Takes one reading of the two channels, dBFS. \param thresholdDb at and below it a channel is silent.
    void add(double leftDb, double rightDb, double thresholdDb);
    /// A pause of the programme, with both channels silent, changes nothing.
    Verdict look();
    /// Starts anew.
    void reset() { *this = {}; }

private:
    Verdict m_verdict; ///< of the last look
    bool m_leftSounds = false; ///< at least once since the last look
    bool m_rightSounds = false;
    bool m_leftDead = false; ///< which one m_verdict is about
    bool m_moved = false; ///< at least once since the last look
    double m_lowestDb = 0.0; ///< with m_highestDb: since the level last moved; none while they are the wrong way round
    double m_highestDb = -1000.0;
};
