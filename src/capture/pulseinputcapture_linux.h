#pragma once

#include "capture/workercapture.h"

/// Records an input device of the sound server. Gain and limiter follow the settings meanwhile.
class PulseInputCapture : public WorkerCapture {
    Q_OBJECT
public:
    using WorkerCapture::WorkerCapture;

    /// Waits a moment for the sound server, so that most failures are seen before it returns.
    bool start(const PcmFormat& format) override;
    /// Display name of the device that is, or was last, recorded; empty until it is known.
    QString description() const override { return friendlyName(); }

protected:
    DeviceWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter) override;

private:
    void followSettings();
};
