#pragma once

#include "capture/linearresampler.h"
#include "capture/mixformat.h"
#include "capture/pcmconvert.h"
#include "capture/pcmformat.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QThread>

#include <atomic>
#include <chrono>

namespace Loopback {

/// As little as may be missing before it is replaced by silence.
constexpr std::chrono::milliseconds SilenceAfter{120};
/// Of one block: a machine that was asleep has hours to make up for.
constexpr std::chrono::milliseconds SilenceAtMost{10'000};

/// Frames of silence to insert now that nothing has come for so long; 0 as long as that is below `patience`.
qint64 silenceFrames(std::chrono::milliseconds since, int sampleRate, std::chrono::milliseconds patience);

/// A result code of the system as texts quote it: 8 hexadecimal digits.
QString hexadecimal(quint32 result);

} // namespace Loopback

/// Reads the mix of one playback device and makes PCM blocks of it until it is asked to stop. run() is the platform's;
/// what a device's packet becomes, and the silence where there is none, are decided here.
class LoopbackWorker : public QThread {
    Q_OBJECT
public:
    /// \param deviceId PlaybackDevice::id, empty for the default device.
    /// \param gain linear factor.
    LoopbackWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter);

    /// From any thread; the worker finishes soon after.
    void requestStop() { m_stopRequested = true; }

Q_SIGNALS:
    void pcmReady(const QByteArray& pcmS16);
    /// The worker finishes after it.
    void failed(const QString& message);
    /// The device that is recorded from now on.
    void endpointResolved(const QString& friendlyName);
    void overload();

protected:
    const QByteArray& deviceId() const { return m_deviceId; }
    bool stopRequested() const { return m_stopRequested; }
    /// How the device's packets are from now on. The first call starts the time that silence fills up.
    void setMixFormat(const MixFormat& mix);
    /// Passes on one packet of the device; without samples: so many frames of silence.
    void deliver(const uchar* samples, qint64 frames);
    /// Makes up for the time without audio, once it is as long as `patience`.
    void keepTime(std::chrono::milliseconds patience = Loopback::SilenceAfter);

    static QString noDeviceText();
    static QString startFailedText();

private:
    QByteArray m_deviceId;
    PcmFormat m_format;
    double m_gain;
    bool m_limiter;
    std::atomic<bool> m_stopRequested = false;
    MixFormat m_mix;
    LinearResampler m_resampler;
    QElapsedTimer m_clock;
    std::chrono::nanoseconds m_coveredUntil{0}; ///< on m_clock; audio or silence was emitted for the time before it
};
