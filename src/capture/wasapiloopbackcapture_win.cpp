#include "capture/wasapiloopbackcapture_win.h"

#include "capture/wasapiloopbackworker_win.h"

LoopbackWorker* WasapiLoopbackCapture::createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                                    bool limiter)
{
    return new WasapiLoopbackWorker(deviceId, format, gain, limiter);
}
