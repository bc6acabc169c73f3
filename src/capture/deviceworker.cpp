#include "capture/deviceworker.h"

#include "capture/pcmconvert.h"

DeviceWorker::DeviceWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter)
    : m_deviceId(deviceId), m_format(format), m_gain(gain), m_limiter(limiter)
{
}

void DeviceWorker::setGain(double gain, bool limiter)
{
    m_gain = gain;
    m_limiter = limiter;
}

void DeviceWorker::setMixFormat(const MixFormat& mix, const ChannelPick& pick)
{
    m_mix = mix;
    m_pick = pick;
    m_resampler.init(m_format.channels, mix.sampleRate, m_format.sampleRate);
}

QByteArray DeviceWorker::convert(const uchar* samples, qint64 frames)
{
    quint64 overs = 0;
    const GainStage gain{m_gain, m_limiter, &overs};
    const QByteArray block = samples ? convertToS16(samples, frames * m_mix.frameBytes, m_mix.channels,
                                                    m_mix.bitsPerSample, m_mix.isFloat, m_format.channels, gain, m_pick)
                                     : QByteArray(frames * m_format.frameBytes(), '\0');
    if (overs > 0)
        Q_EMIT overload();
    return m_resampler.process(block);
}
