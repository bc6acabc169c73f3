#include "capture/quickround.h"

#include "capture/pcmconvert.h"

#include <bit>
#include <cstring>
#include <limits>

namespace {

/// Added to a float below 2^22, this leaves no room for a fraction: the sum's lowest bits are the value rounded to an
/// integer, in two's complement. It is 1.5 * 2^23, and the lowest 16 bits of its own pattern are 0.
constexpr float NoFraction = 12582912.0f;
constexpr quint32 Zero = std::bit_cast<quint32>(NoFraction);
constexpr quint32 Limit = quint32(GainStage::Threshold) - 1;

} // namespace

QuickRound::QuickRound(double scale)
{
    // One rounding of the sample to float, one of the bounds and one of the product, each within 2^-24.
    constexpr double Margin = 3.01 * 0x1p-24;
    // Outside of this range floats lose precision; NaN makes every group doubtful.
    const bool usable = scale == 0.0 || (std::fabs(scale) > 1e-30 && std::fabs(scale) < 1e30);
    m_more = usable ? float(scale * (1.0 + Margin)) : std::numeric_limits<float>::quiet_NaN();
    m_less = usable ? float(scale * (1.0 - Margin)) : std::numeric_limits<float>::quiet_NaN();
}

// In a file of its own: inlined into its caller, the loop is unrolled before it can be turned into vector operations.
bool QuickRound::operator()(const uchar* samples, uchar* out) const
{
    float in[Group];
    std::memcpy(in, samples, sizeof in);
    qint16 rounded[Group];
    quint32 different = 0;
    quint32 beyond = 0;
    // Additions and bit operations only, which the compiler turns into vector operations.
    for (int i = 0; i < Group; ++i) {
        const quint32 upper = std::bit_cast<quint32>(in[i] * m_more + NoFraction);
        const quint32 lower = std::bit_cast<quint32>(in[i] * m_less + NoFraction);
        different |= upper ^ lower;
        beyond |= (upper - (Zero - Limit)) | (Zero + Limit - upper);
        rounded[i] = qint16(upper);
    }
    if (different != 0 || beyond >> 31 != 0)
        return false;
    std::memcpy(out, rounded, sizeof rounded);
    return true;
}
