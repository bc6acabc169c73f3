#pragma once

#include "capture/loopbackcapture.h"

/// Records the monitor of a playback device of the sound server.
class PulseLoopbackCapture : public LoopbackCapture {
    Q_OBJECT
public:
    using LoopbackCapture::LoopbackCapture;

protected:
    LoopbackWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                 bool limiter) override;
};
