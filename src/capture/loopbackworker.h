#pragma once

#include "capture/deviceworker.h"

#include <QElapsedTimer>

#include <chrono>

namespace Loopback {

/// The shortest time without audio that is filled with silence.
constexpr std::chrono::milliseconds SilenceAfter{120};
/// The longest block of silence: a machine that was asleep has hours to make up for.
constexpr std::chrono::milliseconds SilenceAtMost{10'000};

/// Frames of silence to insert when nothing has come for this time; 0 while it is shorter than `patience`.
qint64 silenceFrames(std::chrono::milliseconds since, int sampleRate, std::chrono::milliseconds patience);

/// A result code of the system as texts quote it: 8 hexadecimal digits.
QString hexadecimal(quint32 result);

} // namespace Loopback

/// Reads the mix of one playback device. What a device's packet becomes, and the silence where there is none, are
/// decided here.
class LoopbackWorker : public DeviceWorker {
    Q_OBJECT
public:
    using DeviceWorker::DeviceWorker;

protected:
    /// The format of the device's packets from now on. The first call starts the time that silence fills up.
    void setMixFormat(const MixFormat& mix);
    /// Passes on one packet of the device; when samples is null, that many frames of silence.
    void deliver(const uchar* samples, qint64 frames);
    /// Makes up for the time without audio, once it is as long as `patience`.
    void keepTime(std::chrono::milliseconds patience = Loopback::SilenceAfter);
    /// The time without audio until now stays without it.
    void skipTime();

    static QString noDeviceText();
    static QString startFailedText();

private:
    QElapsedTimer m_clock;
    std::chrono::nanoseconds m_coveredUntil{0}; ///< on m_clock; audio or silence was emitted for the time before it
};
