#pragma once

#include "capture/channelpick.h"
#include "capture/linearresampler.h"
#include "capture/mixformat.h"
#include "capture/pcmformat.h"

#include <QByteArray>
#include <QThread>

#include <atomic>

/// Reads one device on a thread of its own, and makes PCM blocks of it until it is asked to stop. run() is the
/// platform's.
class DeviceWorker : public QThread {
    Q_OBJECT
public:
    /// \param deviceId as the settings name the device, empty for the default device.
    /// \param gain linear factor.
    DeviceWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter);

    /// Asks the worker to finish, which it does soon after. May be called from any thread.
    void requestStop() { m_stopRequested = true; }
    /// Takes effect with the next packet. May be called from any thread.
    void setGain(double gain, bool limiter);

Q_SIGNALS:
    void pcmReady(const QByteArray& pcmS16);
    /// The device cannot be read any more; the worker finishes after this signal.
    void failed(const QString& message);
    /// Display name of the device that is recorded from now on.
    void endpointResolved(const QString& friendlyName);
    /// Something that the operator should know, and that the worker goes on after.
    void warning(const QString& message);
    void overload();

protected:
    const QByteArray& deviceId() const { return m_deviceId; }
    const PcmFormat& format() const { return m_format; }
    bool stopRequested() const { return m_stopRequested; }
    /// The format of the device's packets from now on, and the channels that are wanted of them.
    void setMixFormat(const MixFormat& mix, const ChannelPick& pick = {});
    /// \return one packet of the device as a block, or that many frames of silence where it has no samples; empty when
    /// the packet is too short to give a frame. Emits overload().
    QByteArray convert(const uchar* samples, qint64 frames);

private:
    QByteArray m_deviceId;
    PcmFormat m_format;
    std::atomic<double> m_gain;
    std::atomic<bool> m_limiter;
    std::atomic<bool> m_stopRequested = false;
    MixFormat m_mix;
    ChannelPick m_pick;
    LinearResampler m_resampler;
};
