#pragma once

#include "capture/pcmconvert.h"

#include <QtGlobal>

#include <cmath>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// y rounded to the nearest integer, halves away from zero, as std::round does; for |y| < 2^31. Adding the largest
/// double below one half, instead of one half, keeps 0.49999999999999994 from becoming 1.
inline int roundHalfAway(double y)
{
    return int(y + std::copysign(0.49999999999999994, y));
}

/// Scales and rounds samples in single precision, sixteen at a time, and says when that is not beyond doubt.
/// Single precision is not exact, but it encloses: scaling by slightly more and by slightly less than asked gives two
/// values with the exact product strictly between them. Where both round to the same integer, so does the product, and
/// it is no tie. Of loud programme a few samples in a thousand stay in doubt; the caller does their group the exact
/// way.
class QuickRound {
public:
    static constexpr int Group = 16;

    /// \param scale what the samples are multiplied with to come to the 16-bit scale, gain included.
    explicit QuickRound(double scale)
    {
        // One rounding of the sample to float, one of the bounds and one of the product, each within 2^-24.
        constexpr double Margin = 3.01 * 0x1p-24;
        // Outside of this range floats lose precision; NaN makes every group doubtful.
        const bool usable = scale == 0.0 || (std::fabs(scale) > 1e-30 && std::fabs(scale) < 1e30);
        m_more = usable ? float(scale * (1.0 + Margin)) : std::numeric_limits<float>::quiet_NaN();
        m_less = usable ? float(scale * (1.0 - Margin)) : std::numeric_limits<float>::quiet_NaN();
    }

    /// \param samples sixteen floats, not necessarily aligned, each within 2^-24 of the sample it stands for.
    /// \param out takes sixteen S16LE samples, not necessarily aligned.
    /// \return false, with `out` untouched, when a result is in doubt or beyond GainStage::Threshold, or is not finite.
    bool operator()(const uchar* samples, uchar* out) const
    {
#ifdef __SSE2__
        const __m128 more = _mm_set1_ps(m_more);
        const __m128 less = _mm_set1_ps(m_less);
        const __m128i limit = _mm_set1_epi16(short(GainStage::Threshold) - 1);
        const __m128i negativeLimit = _mm_set1_epi16(1 - short(GainStage::Threshold));
        __m128i rounded[2];
        __m128i doubt = _mm_setzero_si128();
        for (int half = 0; half < 2; ++half) {
            const auto* x = reinterpret_cast<const float*>(samples + half * 32);
            const __m128 x0 = _mm_loadu_ps(x);
            const __m128 x1 = _mm_loadu_ps(x + 4);
            // What does not fit (NaN, too) converts to INT_MIN, and packing saturates: both are cut to the limit below.
            const __m128i upper =
                _mm_packs_epi32(_mm_cvtps_epi32(_mm_mul_ps(x0, more)), _mm_cvtps_epi32(_mm_mul_ps(x1, more)));
            const __m128i lower =
                _mm_packs_epi32(_mm_cvtps_epi32(_mm_mul_ps(x0, less)), _mm_cvtps_epi32(_mm_mul_ps(x1, less)));
            const __m128i clear = _mm_max_epi16(_mm_min_epi16(lower, limit), negativeLimit);
            doubt = _mm_or_si128(doubt, _mm_xor_si128(upper, clear));
            rounded[half] = upper;
        }
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(doubt, _mm_setzero_si128())) != 0xffff)
            return false;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), rounded[0]);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16), rounded[1]);
        return true;
#else
        Q_UNUSED(samples)
        Q_UNUSED(out)
        return false;
#endif
    }

private:
    float m_more, m_less;
};
