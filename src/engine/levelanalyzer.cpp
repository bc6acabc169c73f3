#include "engine/levelanalyzer.h"

#include <QtEndian>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto ReleaseInterval = 20ms;
constexpr int ChunksPerSecond = 1s / ReleaseInterval;
/// The queue runs empty between any two blocks. Were the timer to stop each time, a block would start it anew, and the
/// readings would follow the unsteady steps of the blocks. So it rests after one second without a reading.
constexpr int EmptyTicksBeforeRest = 1s / ReleaseInterval;
constexpr double FullScale = 32768.0;

struct Chunk {
    int left = 0; ///< largest magnitude of the first channel; that of -32768 is 32768
    int right = 0; ///< and of all others; that of the only channel in mono
    quint64 squares = 0;
};

/// Channels is their number, or 0 when it is only known at run time, in `channels`. Lowest and highest sample are
/// kept, not magnitudes, because a processor compares eight samples at once as long as they stay 16-bit.
template <int Channels>
Chunk measure(const char* pcm, qint64 frames, int channels)
{
    const int count = Channels > 0 ? Channels : channels;
    qint16 lowLeft = 0, highLeft = 0, lowRight = 0, highRight = 0;
    quint64 squares = 0;
    for (qint64 i = 0; i < frames; ++i) {
        for (int c = 0; c < count; ++c) {
            const auto sample = qFromLittleEndian<qint16>(pcm + 2 * (i * count + c));
            qint16& low = c == 0 ? lowLeft : lowRight;
            qint16& high = c == 0 ? highLeft : highRight;
            low = std::min(low, sample);
            high = std::max(high, sample);
            squares += quint32(sample * sample);
        }
    }
    const int left = std::max<int>(highLeft, -lowLeft);
    return {left, count > 1 ? std::max<int>(highRight, -lowRight) : left, squares};
}

/// \param value 1 is full scale.
double decibels(double value)
{
    return value > 0.0 ? std::max(20.0 * std::log10(value), LevelAnalyzer::FloorDb) : LevelAnalyzer::FloorDb;
}

} // namespace

LevelAnalyzer::LevelAnalyzer(QObject* parent) : QObject(parent)
{
    // A coarse timer fires every 31 ms on Windows; the readings would then pile up.
    m_release.setTimerType(Qt::PreciseTimer);
    m_release.setInterval(ReleaseInterval);
    connect(&m_release, &QTimer::timeout, this, &LevelAnalyzer::onReleaseTimer);
}

void LevelAnalyzer::configure(const PcmFormat& format)
{
    m_format = format;
    reset();
}

void LevelAnalyzer::reset()
{
    m_readings.clear();
    m_lastPeakDb = FloorDb;
    m_silentFrames = 0;
    m_silent = false;
}

void LevelAnalyzer::setSilence(double thresholdDb, int seconds)
{
    m_silenceThresholdDb = thresholdDb;
    m_silenceSeconds = seconds;
}

void LevelAnalyzer::process(const QByteArray& pcmS16)
{
    const int channels = std::max(m_format.channels, 1);
    const qint64 frames = pcmS16.size() / (2 * qint64(channels));
    const qint64 chunkFrames = std::max(m_format.sampleRate / ChunksPerSecond, 1);
    const auto measureChunk = channels == 1 ? measure<1> : channels == 2 ? measure<2> : measure<0>;

    for (qint64 done = 0; done < frames; done += chunkFrames) {
        const qint64 n = std::min(chunkFrames, frames - done);
        const qint64 samples = n * channels;
        const Chunk chunk = measureChunk(pcmS16.constData() + done * channels * 2, n, channels);
        m_lastPeakDb = decibels(std::max(chunk.left, chunk.right) / FullScale);
        m_readings.enqueue({m_lastPeakDb, decibels(std::sqrt(double(chunk.squares) / double(samples)) / FullScale),
                            decibels(chunk.left / FullScale), decibels(chunk.right / FullScale)});
        judgeSilence(m_lastPeakDb, n);
    }
    if (const qsizetype excess = m_readings.size() - MaxReadings; excess > 0)
        m_readings.remove(0, excess);
    if (!m_release.isActive() && !m_readings.isEmpty())
        m_release.start();
}

void LevelAnalyzer::judgeSilence(double peakDb, qint64 frames)
{
    if (peakDb > m_silenceThresholdDb) {
        const bool restored = std::exchange(m_silent, false);
        m_silentFrames = 0;
        if (restored)
            Q_EMIT audioRestored();
        return;
    }
    m_silentFrames += frames;
    if (!m_silent && m_silenceSeconds > 0 && m_silentFrames >= qint64(m_silenceSeconds) * m_format.sampleRate) {
        m_silent = true;
        Q_EMIT silenceDetected(m_silenceSeconds);
    }
}

void LevelAnalyzer::onReleaseTimer()
{
    m_emptyTicks = m_readings.isEmpty() ? m_emptyTicks + 1 : 0;
    if (m_emptyTicks >= EmptyTicksBeforeRest)
        m_release.stop();
    emitNextSample();
}

void LevelAnalyzer::emitNextSample()
{
    if (m_readings.isEmpty())
        return;
    const Reading reading = m_readings.dequeue();
    Q_EMIT levelChanged(reading.peakDb, reading.rmsDb);
    Q_EMIT channelLevels(reading.leftDb, reading.rightDb);
}
