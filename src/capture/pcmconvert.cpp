#include "capture/pcmconvert.h"

#include "capture/quickround.h"

#include <QVarLengthArray>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

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

/// Decodes, amplifies and limits `count` samples, one by one. \return how many were beyond the threshold.
template <class Format>
quint64 convertExactly(const uchar* in, qint64 count, uchar* out, const GainStage& stage)
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

/// Converts groups the short way, up to the first that has to go the exact way. \return how many.
template <class Format>
qint64 convertGroups(const QuickRound& quick, const uchar* in, qint64 groups, uchar* out)
{
    constexpr int Group = QuickRound::Group;
    if constexpr (std::is_same_v<Format, Float32>)
        return quick(in, groups, out);
    for (qint64 group = 0; group < groups; ++group, in += Group * Format::Bytes, out += Group * 2) {
        float samples[Group];
        for (int i = 0; i < Group; ++i)
            samples[i] = float(Format::read(in + i * Format::Bytes));
        qint16 rounded[Group]; // not in `out`, which may be `in`: a group in doubt is read once more
        if (quick(reinterpret_cast<const uchar*>(samples), 1, reinterpret_cast<uchar*>(rounded)) == 0)
            return group;
        std::memcpy(out, rounded, sizeof rounded);
    }
    return groups;
}

/// Does what convertExactly() does, but hands it only the groups that need it. `out` may be `in` where both are 16-bit.
template <class Format>
quint64 convertSamples(const uchar* in, qint64 count, uchar* out, const GainStage& stage)
{
    const QuickRound quick(Format::Scale * stage.gain);
    quint64 overs = 0;
    while (count > 0) {
        const qint64 done = convertGroups<Format>(quick, in, count / QuickRound::Group, out) * QuickRound::Group;
        const qint64 exact = std::min<qint64>(count - done, QuickRound::Group);
        overs += convertExactly<Format>(in + done * Format::Bytes, exact, out + done * 2, stage);
        in += (done + exact) * Format::Bytes;
        out += (done + exact) * 2;
        count -= done + exact;
    }
    return overs;
}

/// Decodes one frame into dstChannels values on the 16-bit scale.
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
quint64 convertFrames(const uchar* in, qint64 frames, int srcChannels, int dstChannels, uchar* out,
                      const GainStage& stage)
{
    if (srcChannels == dstChannels)
        return convertSamples<Format>(in, frames * srcChannels, out, stage);

    // Few enough frames at a time that their values stay in the processor's cache.
    constexpr qint64 BlockFrames = 256;
    QVarLengthArray<double, 2 * BlockFrames> values(std::min(frames, BlockFrames) * dstChannels);
    quint64 overs = 0;
    for (qint64 done = 0; done < frames; done += BlockFrames) {
        const qint64 block = std::min(frames - done, BlockFrames);
        for (qint64 i = 0; i < block; ++i)
            remapFrame<Format>(in + (done + i) * srcChannels * Format::Bytes, srcChannels, dstChannels,
                               values.data() + i * dstChannels);
        overs += convertSamples<Decoded>(reinterpret_cast<const uchar*>(values.constData()), block * dstChannels,
                                         out + done * dstChannels * 2, stage);
    }
    return overs;
}

using Conversion = quint64 (*)(const uchar*, qint64, int, int, uchar*, const GainStage&);

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
                        int dstChannels, const GainStage& gain)
{
    const qint64 frameBytes = bitsPerSample > 0 && srcChannels > 0 ? qint64(bitsPerSample / 8) * srcChannels : 0;
    const qint64 frames = frameBytes > 0 ? bytes / frameBytes : 0;
    if (frames <= 0 || dstChannels <= 0)
        return {};
    const Conversion convert = conversionFor(bitsPerSample, isFloat);
    const qsizetype size = frames * dstChannels * 2;
    if (!convert)
        return QByteArray(size, '\0');
    QByteArray pcm(size, Qt::Uninitialized);
    report(convert(data, frames, srcChannels, dstChannels, reinterpret_cast<uchar*>(pcm.data()), gain), gain);
    return pcm;
}

QByteArray convertToS16(const uchar* data, qint64 bytes, const QAudioFormat& format, int dstChannels,
                        const GainStage& gain)
{
    // An unknown sample format has zero bytes, so that nothing is converted.
    return convertToS16(data, bytes, format.channelCount(), format.bytesPerSample() * 8,
                        format.sampleFormat() == QAudioFormat::Float, dstChannels, gain);
}

void applyGainS16(QByteArray& pcm, const GainStage& gain)
{
    const bool unity = std::fabs(gain.gain - 1.0) * 1e12 <= std::min(std::fabs(gain.gain), 1.0);
    if ((unity && !gain.limiter) || pcm.size() < 2)
        return;
    auto* samples = reinterpret_cast<uchar*>(pcm.data());
    report(convertSamples<Signed16>(samples, pcm.size() / 2, samples, gain), gain);
}
