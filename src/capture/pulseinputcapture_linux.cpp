#include "capture/pulseinputcapture_linux.h"

#include "capture/pcmconvert.h"
#include "capture/pulseinputworker_linux.h"
#include "settings/appsettings.h"

PulseInputCapture::PulseInputCapture(const QAudioDevice& device, const ChannelPick& pick, QObject* parent)
    : WorkerCapture(device.id(), parent), m_device(device), m_pick(pick)
{
    connect(this, &AudioCapture::dataReady, this, &PulseInputCapture::followSettings);
}

DeviceWorker* PulseInputCapture::createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                              bool limiter)
{
    return new PulseInputWorker(deviceId, m_pick, format, gain, limiter);
}

void PulseInputCapture::followSettings()
{
    const AppSettings& settings = AppSettings::instance();
    if (worker())
        worker()->setGain(GainStage::factorFromDb(settings.inputGainDb), settings.softLimit);
}
