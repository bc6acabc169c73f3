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
    DeviceWorker::setMixFormat(mix);
    if (!m_clock.isValid())
        m_clock.start();
}

void LoopbackWorker::deliver(const uchar* samples, qint64 frames)
{
    const QByteArray block = convert(samples, frames);
    if (block.isEmpty())
        return;
    m_coveredUntil = nanoseconds(m_clock.nsecsElapsed());
    Q_EMIT pcmReady(block);
}

void LoopbackWorker::skipTime()
{
    m_coveredUntil = nanoseconds(m_clock.nsecsElapsed());
}

void LoopbackWorker::keepTime(milliseconds patience)
{
    const nanoseconds now(m_clock.nsecsElapsed());
    const auto missing = [&] {
        const auto since = duration_cast<milliseconds>(now - m_coveredUntil);
        return Loopback::silenceFrames(since, format().sampleRate, patience);
    };
    QByteArray silence; // shared by all the blocks of a long gap, which may wait for the recorder together
    for (qint64 frames = missing(); frames > 0 && !stopRequested(); frames = missing()) {
        // Not until now: the part of a frame and of a millisecond that is left over counts next time, or an hour of
        // silence would become seconds shorter.
        m_coveredUntil += nanoseconds(frames * 1'000'000'000 / format().sampleRate);
        if (silence.size() != frames * format().frameBytes())
            silence = QByteArray(frames * format().frameBytes(), '\0');
        Q_EMIT pcmReady(silence);
    }
}
