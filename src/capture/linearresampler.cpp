#include "capture/linearresampler.h"

#include "capture/rounding.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace {

/// Where the next output frame is read, index + rest / dstRate input frames, and where it is written. The position is
/// in whole numbers, so that a step of srcRate / dstRate never loses anything, not in years.
struct Cursor {
    qint64 index;
    qint64 rest; ///< 0 to dstRate - 1
    char* out;
};

/// The two input frames around a position.
struct Neighbours {
    const char* before;
    const char* after;
};

/// Writes the frames whose position is below `end`; neighboursOf(index) names what they lie between.
/// Channels is their number when it is known at compile time, otherwise 0. \return where to go on.
template <int Channels, class Lookup>
Cursor writeUntil(qint64 end, Cursor at, const LinearResampler& stream, Lookup neighboursOf)
{
    const int channels = Channels > 0 ? Channels : stream.channels;
    const int dstRate = stream.dstRate;
    const int wholeStep = stream.srcRate / dstRate;
    const int restStep = stream.srcRate % dstRate;
    while (at.index < end) {
        const Neighbours frames = neighboursOf(at.index);
        const double f = double(at.rest) / dstRate;
        for (int c = 0; c < channels; ++c, at.out += 2) {
            const int a = qFromLittleEndian<qint16>(frames.before + 2 * c);
            const int b = qFromLittleEndian<qint16>(frames.after + 2 * c);
            // Between a and b, hence never out of range.
            qToLittleEndian(qint16(roundHalfAway(a + (b - a) * f)), at.out);
        }
        at.rest += restStep;
        const bool carry = at.rest >= dstRate;
        at.index += wholeStep + carry;
        at.rest -= carry ? dstRate : 0;
    }
    return at;
}

template <int Channels>
void interpolate(const LinearResampler& stream, Cursor at, const char* in, qint64 frames)
{
    const qint64 frameBytes = 2 * (Channels > 0 ? Channels : stream.channels);
    if (at.index < 0) {
        QByteArray previous(frameBytes, '\0');
        qToLittleEndian<qint16>(stream.last.constData(), std::min<qsizetype>(stream.last.size(), stream.channels),
                                previous.data());
        at = writeUntil<Channels>(0, at, stream, [&](qint64) { return Neighbours{previous.constData(), in}; });
    }
    at = writeUntil<Channels>(frames - 1, at, stream, [=](qint64 index) {
        const char* before = in + index * frameBytes;
        return Neighbours{before, before + frameBytes};
    });
    const char* final = in + (frames - 1) * frameBytes;
    writeUntil<Channels>(frames, at, stream, [=](qint64) { return Neighbours{final, final}; });
}

} // namespace

void LinearResampler::init(int channelCount, int sourceRate, int targetRate)
{
    channels = std::max(channelCount, 1);
    srcRate = std::max(sourceRate, 1);
    dstRate = std::max(targetRate, 1);
    passthrough = srcRate == dstRate;
    reset();
}

void LinearResampler::reset()
{
    pos = 0.0;
    last = QList<qint16>(channels, 0);
}

QByteArray LinearResampler::process(const QByteArray& pcmS16)
{
    if (passthrough || pcmS16.isEmpty())
        return pcmS16;
    const qint64 frames = pcmS16.size() / (2 * channels);
    if (frames <= 0)
        return {};

    // Everything in units of 1 / dstRate input frames. No earlier frame than the last one is known.
    const qint64 start = std::max<qint64>(std::llround(pos * dstRate), -dstRate);
    const qint64 end = frames * dstRate;
    const qint64 count = start < end ? (end - start + srcRate - 1) / srcRate : 0;

    QByteArray out(count * 2 * channels, Qt::Uninitialized);
    const Cursor cursor =
        start < 0 ? Cursor{-1, start + dstRate, out.data()} : Cursor{start / dstRate, start % dstRate, out.data()};
    const auto run = channels == 1 ? interpolate<1> : channels == 2 ? interpolate<2> : interpolate<0>;
    run(*this, cursor, pcmS16.constData(), frames);

    pos = double(start + count * srcRate - end) / dstRate;
    last.resize(channels);
    qFromLittleEndian<qint16>(pcmS16.constData() + (frames - 1) * 2 * channels, channels, last.data());
    return out;
}
