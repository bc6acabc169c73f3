#include "capture/pcmconvert.h"

#include "capture/rounding.h"

#include <QVarLengthArray>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace {

/// Distance from the threshold that the limiter's knee approaches: full scale, 32767.
constexpr double Knee = 3564.0;

// The sample formats. A sample on the 16-bit scale is double(read()) * Scale, which is exact in all of them.
struct Unsigned8 {
    static constexpr int Bytes = 1;
    static constexpr double Scale = 256.0;
    static int read(const uchar* p) { return *p - 128; }
};
struct Signed16 {
    static constexpr int Bytes = 2;
    static constexpr double Scale = 1.0;
    static qint16 read(const uchar* p) { return qFromLittleEndian<qint16>(p); }
};
struct Signed24 {
    static constexpr int Bytes = 3;
    static constexpr double Scale = 1.0 / 256.0;
    static qint32 read(const uchar* p)
    {
        return qint32(quint32(p[0]) << 8 | quint32(p[1]) << 16 | quint32(p[2]) << 24) >> 8;
    }
};
struct Signed32 {
    static constexpr int Bytes = 4;
    static constexpr double Scale = 1.0 / 65536.0;
    static qint32 read(const uchar* p) { return qFromLittleEndian<qint32>(p); }
};
struct Float32 {
    static constexpr int Bytes = 4;
    static constexpr double Scale = 32767.0;
    static float read(const uchar* p) { return qFromLittleEndian<float>(p); }
};
struct Float64 {
    static constexpr int Bytes = 8;
    static constexpr double Scale = 32767.0;
    static double read(const uchar* p) { return qFromLittleEndian<double>(p); }
};
/// What remapChannels() leaves: doubles of this machine, on the 16-bit scale already.
struct Decoded {
    static constexpr int Bytes = sizeof(double);
    static constexpr double Scale = 1.0;
    static double read(const uchar* p) { return qFromUnaligned<double>(p); }
};

template <class Format>
double decode(const uchar* p)
{
    return double(Format::read(p)) * Format::Scale;
}

/// What becomes of a value beyond the threshold. What is not a number, as a broken driver may send, becomes silence.
double limited(double y, bool limiter)
{
    if (std::isnan(y))
        return 0.0;
    if (limiter) {
        const double excess = (std::fabs(y) - GainStage::Threshold) / Knee;
        y = std::copysign(GainStage::Threshold + Knee * std::tanh(excess), y);
    }
    return std::clamp(y, -32768.0, 32767.0);
}

/// Decodes, amplifies and limits `count` samples. `out` may be `in` where both are 16-bit.
/// \return how many were beyond the threshold.
template <class Format>
quint64 convertSamples(const uchar* in, qint64 count, uchar* out, const GainStage& stage)
{
    quint64 overs = 0;
    for (qint64 i = 0; i < count; ++i) {
        double y = decode<Format>(in + i * Format::Bytes) * stage.gain;
        if (!(std::fabs(y) <= GainStage::Threshold)) {
            overs += std::isnan(y) ? 0 : 1;
            y = limited(y, stage.limiter);
        }
        qToLittleEndian(qint16(roundHalfAway(y)), out + 2 * i);
    }
    return overs;
}

/// The channels of a source that count, within its frames.
struct Used {
    int frameChannels; ///< all of the source's
    int skip; ///< channels before the first that counts
    int channels;
};

/// Decodes one frame into dstChannels values on the 16-bit scale.
/// \param frame begins with the first channel that counts.
template <class Format>
void remapFrame(const uchar* frame, int srcChannels, int dstChannels, double* values)
{
    if (dstChannels == 1) {
        double sum = 0.0;
        for (int c = 0; c < srcChannels; ++c)
            sum += decode<Format>(frame + c * Format::Bytes);
        values[0] = sum / srcChannels;
        return;
    }
    for (int c = 0; c < dstChannels; ++c)
        values[c] = decode<Format>(frame + std::min(c, srcChannels - 1) * Format::Bytes);
}

template <class Format>
quint64 convertFrames(const uchar* in, qint64 frames, Used used, int dstChannels, uchar* out, const GainStage& stage)
{
    if (used.channels == dstChannels && used.frameChannels == dstChannels)
        return convertSamples<Format>(in, frames * dstChannels, out, stage);

    // Few enough frames at a time that their values stay in the processor's cache.
    constexpr qint64 BlockFrames = 256;
    QVarLengthArray<double, 2 * BlockFrames> values(std::min(frames, BlockFrames) * dstChannels);
    in += used.skip * Format::Bytes;
    quint64 overs = 0;
    for (qint64 done = 0; done < frames; done += BlockFrames) {
        const qint64 block = std::min(frames - done, BlockFrames);
        for (qint64 i = 0; i < block; ++i)
            remapFrame<Format>(in + (done + i) * used.frameChannels * Format::Bytes, used.channels, dstChannels,
                               values.data() + i * dstChannels);
        overs += convertSamples<Decoded>(reinterpret_cast<const uchar*>(values.constData()), block * dstChannels,
                                         out + done * dstChannels * 2, stage);
    }
    return overs;
}

using Conversion = quint64 (*)(const uchar*, qint64, Used, int, uchar*, const GainStage&);

/// \return null for a format that reads as silence.
Conversion conversionFor(int bitsPerSample, bool isFloat)
{
    switch (bitsPerSample) {
    case 8:
        return isFloat ? nullptr : convertFrames<Unsigned8>;
    case 16:
        return isFloat ? nullptr : convertFrames<Signed16>;
    case 24:
        return isFloat ? nullptr : convertFrames<Signed24>;
    case 32:
        return isFloat ? convertFrames<Float32> : convertFrames<Signed32>;
    case 64:
        return isFloat ? convertFrames<Float64> : nullptr;
    default:
        return nullptr;
    }
}

void report(quint64 overs, const GainStage& stage)
{
    if (stage.overCount)
        *stage.overCount += overs;
}

} // namespace

double GainStage::factorFromDb(double db)
{
    return std::pow(10.0, db / 20.0);
}

QByteArray convertToS16(const uchar* data, qint64 bytes, int srcChannels, int bitsPerSample, bool isFloat,
                        int dstChannels, const GainStage& gain, const ChannelPick& pick)
{
    const qint64 frameBytes = bitsPerSample > 0 && srcChannels > 0 ? qint64(bitsPerSample / 8) * srcChannels : 0;
    const qint64 frames = frameBytes > 0 ? bytes / frameBytes : 0;
    if (frames <= 0 || dstChannels <= 0 || !pick.fits(srcChannels))
        return {};
    const Conversion convert = conversionFor(bitsPerSample, isFloat);
    const qsizetype size = frames * dstChannels * 2;
    if (!convert)
        return QByteArray(size, '\0');
    QByteArray pcm(size, Qt::Uninitialized);
    const Used used =
        pick.isEverything() ? Used{srcChannels, 0, srcChannels} : Used{srcChannels, pick.first - 1, pick.count};
    report(convert(data, frames, used, dstChannels, reinterpret_cast<uchar*>(pcm.data()), gain), gain);
    return pcm;
}

QByteArray convertToS16(const uchar* data, qint64 bytes, const QAudioFormat& format, int dstChannels,
                        const GainStage& gain, const ChannelPick& pick)
{
    // An unknown sample format has zero bytes, so that nothing is converted.
    return convertToS16(data, bytes, format.channelCount(), format.bytesPerSample() * 8,
                        format.sampleFormat() == QAudioFormat::Float, dstChannels, gain, pick);
}

void applyGainS16(QByteArray& pcm, const GainStage& gain)
{
    const bool unity = std::fabs(gain.gain - 1.0) * 1e12 <= std::min(std::fabs(gain.gain), 1.0);
    if ((unity && !gain.limiter) || pcm.size() < 2)
        return;
    auto* samples = reinterpret_cast<uchar*>(pcm.data());
    report(convertSamples<Signed16>(samples, pcm.size() / 2, samples, gain), gain);
}
