#pragma once

#include "capture/loopbackworker.h"

struct IAudioCaptureClient;

/// Reads the mix of a playback device by Core Audio. An identifier that no longer exists is replaced by the default
/// device. All COM objects belong to this thread.
class WasapiLoopbackWorker : public LoopbackWorker {
    Q_OBJECT
public:
    /// AUDCLNT_STREAMFLAGS_LOOPBACK: records what an endpoint plays.
    static constexpr quint32 LoopbackFlag = 0x20000;

    /// \param streamFlags without LoopbackFlag it records a capture endpoint, in the same way.
    WasapiLoopbackWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter,
                         quint32 streamFlags = LoopbackFlag);

protected:
    void run() override;

private:
    /// \return why it ended; empty when it was asked to, or the device went away.
    QString record();
    bool drain(IAudioCaptureClient* packets);

    quint32 m_streamFlags;
};
