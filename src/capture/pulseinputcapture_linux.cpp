#include "capture/pulseinputcapture_linux.h"

#include "capture/pcmconvert.h"
#include "capture/pulseinputworker_linux.h"
#include "settings/appsettings.h"

using namespace std::chrono_literals;

namespace {

/// The main thread stands still for so long at most. A server that is well needs a tenth of it.
constexpr auto OpenTimeout = 300ms;

} // namespace

bool PulseInputCapture::start(const PcmFormat& format)
{
    stop();
    setFriendlyName({}); // what the last run recorded says nothing about this one
    WorkerCapture::start(format);
    const auto opening = static_cast<PulseInputWorker*>(worker())->waitUntilOpen(OpenTimeout);
    if (!opening)
        return true;
    setFriendlyName(opening->device);
    if (opening->failure.isEmpty())
        return true;
    stop();
    Q_EMIT errorOccurred(opening->failure);
    return false;
}

DeviceWorker* PulseInputCapture::createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                              bool limiter)
{
    const AppSettings& settings = AppSettings::instance();
    auto* const worker = new PulseInputWorker(
        deviceId, ChannelPick::fromSettings(settings.firstChannel, settings.channelCount), format, gain, limiter);
    connect(worker, &DeviceWorker::pcmReady, this, &PulseInputCapture::followSettings);
    return worker;
}

void PulseInputCapture::followSettings()
{
    const AppSettings& settings = AppSettings::instance();
    if (worker())
        worker()->setGain(GainStage::factorFromDb(settings.inputGainDb), settings.softLimit);
}
