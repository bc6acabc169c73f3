#include "capture/quickround.h"

#include "capture/pcmconvert.h"

#include <QtEndian>

#include <bit>
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

// The wider vectors of newer processors, chosen when the program is loaded, where the loader has that choice.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__)
#define ALSO_FOR_NEWER_PROCESSORS __attribute__((target_clones("arch=x86-64-v3", "default")))
#else
#define ALSO_FOR_NEWER_PROCESSORS
#endif

ALSO_FOR_NEWER_PROCESSORS
qint64 QuickRound::operator()(const uchar* __restrict samples, qint64 groups, uchar* __restrict out) const
{
    const float more = m_more;
    const float less = m_less;
    for (qint64 group = 0; group < groups; ++group, samples += Group * sizeof(float), out += Group * sizeof(qint16)) {
        quint32 doubt = 0;
        // Additions and bit operations only, which the compiler turns into vector operations; unrolled, it does not.
#pragma GCC unroll 1
        for (int i = 0; i < Group; ++i) {
            const auto sample = qFromUnaligned<float>(samples + i * sizeof(float));
            const quint32 upper = std::bit_cast<quint32>(sample * more + NoFraction);
            const quint32 lower = std::bit_cast<quint32>(sample * less + NoFraction);
            const quint32 beyond = (upper - (Zero - Limit)) | (Zero + Limit - upper); // negative when it is
            doubt |= (upper ^ lower) | beyond >> 31;
            qToUnaligned(qint16(upper), out + i * sizeof(qint16));
        }
        if (doubt != 0)
            return group;
    }
    return groups;
}
