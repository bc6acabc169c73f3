#pragma once

#include "capture/channelpick.h"
#include "capture/workercapture.h"

#include <QAudioDevice>

/// Records picked channels of an input device of the sound server. Gain and limiter follow the settings meanwhile.
class PulseInputCapture : public WorkerCapture {
    Q_OBJECT
public:
    PulseInputCapture(const QAudioDevice& device, const ChannelPick& pick, QObject* parent = nullptr);

    QString description() const override { return m_device.description(); }

protected:
    DeviceWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain, bool limiter) override;

private:
    void followSettings();

    QAudioDevice m_device;
    ChannelPick m_pick;
};
