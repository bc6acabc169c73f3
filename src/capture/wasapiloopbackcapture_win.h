#pragma once

#include "capture/loopbackcapture.h"

/// Records a playback device by the loopback mode of Windows' Core Audio.
class WasapiLoopbackCapture : public LoopbackCapture {
    Q_OBJECT
public:
    using LoopbackCapture::LoopbackCapture;

protected:
    LoopbackWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                 bool limiter) override;
};
