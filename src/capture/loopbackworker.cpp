#include "capture/loopbackworker.h"

#include <algorithm>

using namespace std::chrono;

qint64 Loopback::silenceFrames(milliseconds since, int sampleRate, milliseconds patience)
{
    return since < patience ? 0 : sampleRate * qint64(std::min(since, SilenceAtMost).count()) / 1000;
}

QString Loopback::hexadecimal(quint32 result)
{
    return QStringLiteral("%1").arg(result, 8, 16, QLatin1Char('0'));
}

LoopbackWorker::LoopbackWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter)
    : m_deviceId(deviceId), m_format(format), m_gain(gain), m_limiter(limiter)
{
}

QString LoopbackWorker::noDeviceText()
{
    return tr("No playback device is available for loopback capture.");
}

QString LoopbackWorker::startFailedText()
{
    return tr("Could not start loopback capture.");
}

void LoopbackWorker::setMixFormat(const MixFormat& mix)
{
    m_mix = mix;
    m_resampler.init(m_format.channels, mix.sampleRate, m_format.sampleRate);
    if (!m_clock.isValid())
        m_clock.start();
}

void LoopbackWorker::deliver(const uchar* samples, qint64 frames)
{
    quint64 overs = 0;
    const QByteArray block = samples
                                 ? convertToS16(samples, frames * m_mix.frameBytes, m_mix.channels, m_mix.bitsPerSample,
                                                m_mix.isFloat, m_format.channels, {m_gain, m_limiter, &overs})
                                 : QByteArray(frames * m_format.frameBytes(), '\0');
    if (overs > 0)
        Q_EMIT overload();
    const QByteArray resampled = m_resampler.process(block);
    if (resampled.isEmpty())
        return;
    m_coveredUntil = nanoseconds(m_clock.nsecsElapsed());
    Q_EMIT pcmReady(resampled);
}

void LoopbackWorker::keepTime(milliseconds patience)
{
    const nanoseconds now(m_clock.nsecsElapsed());
    const auto missing = [&] {
        const auto since = duration_cast<milliseconds>(now - m_coveredUntil);
        return Loopback::silenceFrames(since, m_format.sampleRate, patience);
    };
    QByteArray silence; // shared by all the blocks of a long gap, which may wait for the recorder together
    for (qint64 frames = missing(); frames > 0 && !stopRequested(); frames = missing()) {
        // Not until now: the part of a frame and of a millisecond that is left over counts next time, or an hour of
        // silence would become seconds shorter.
        m_coveredUntil += nanoseconds(frames * 1'000'000'000 / m_format.sampleRate);
        if (silence.size() != frames * m_format.frameBytes())
            silence = QByteArray(frames * m_format.frameBytes(), '\0');
        Q_EMIT pcmReady(silence);
    }
}
