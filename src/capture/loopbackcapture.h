#pragma once

#include "capture/loopbackworker.h"
#include "capture/workercapture.h"

/// Records what a playback device plays: the part that all systems share.
class LoopbackCapture : public WorkerCapture {
    Q_OBJECT
public:
    using WorkerCapture::WorkerCapture;

    /// Display name of the device that is recorded; until it is known, a text for the default device.
    QString description() const override;

protected:
    LoopbackWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                 bool limiter) override = 0;
};
