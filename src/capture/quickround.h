#pragma once

#include <QtGlobal>

#include <cmath>

/// y rounded to the nearest integer, halves away from zero, as std::round does; for |y| < 2^31. Adding the largest
/// double below one half, instead of one half, keeps 0.49999999999999994 from becoming 1.
inline int roundHalfAway(double y)
{
    return int(y + std::copysign(0.49999999999999994, y));
}

/// Scales and rounds samples in single precision, a group of them at a time, and says when that is not beyond doubt.
/// Single precision is not exact, but it encloses: scaling by slightly more and by slightly less than asked gives two
/// values with the exact product strictly between them. Where both round to the same integer, so does the product, and
/// it is no tie. Of loud programme a few samples in a thousand stay in doubt; the caller does their group the exact
/// way.
class QuickRound {
public:
    static constexpr int Group = 16;

    /// \param scale what the samples are multiplied with to come to the 16-bit scale, gain included.
    explicit QuickRound(double scale);

    /// Does one group after another, up to the first with a result that is in doubt, beyond GainStage::Threshold, or
    /// not finite. That group's part of `out` is left with anything in it.
    /// \param samples floats, not necessarily aligned, each within 2^-24 of the sample it stands for.
    /// \param out takes as many S16 samples in the machine's order, not necessarily aligned; not the same memory.
    /// \return how many groups are done.
    qint64 operator()(const uchar* samples, qint64 groups, uchar* out) const;

private:
    float m_more, m_less;
};
