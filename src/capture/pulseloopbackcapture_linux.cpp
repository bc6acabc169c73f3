#include "capture/pulseloopbackcapture_linux.h"

#include "capture/pulseloopbackworker_linux.h"

LoopbackWorker* PulseLoopbackCapture::createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                                   bool limiter)
{
    return new PulseLoopbackWorker(deviceId, format, gain, limiter);
}
