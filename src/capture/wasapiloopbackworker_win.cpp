#include "capture/wasapiloopbackworker_win.h"

#include "capture/wasapiendpoints_win.h"

#include <QLoggingCategory>
#include <QScopeGuard>

#include <audioclient.h>

#include <memory>

Q_LOGGING_CATEGORY(lcWasapi, "tidewell.capture.wasapi")

namespace {

constexpr unsigned long PollMs = 20;
constexpr REFERENCE_TIME BufferDuration = 2'000'000; // in units of 100 ns: ten times the poll

QString quoted(HRESULT result)
{
    return Loopback::hexadecimal(quint32(result));
}

/// The endpoint of this identifier, else the default one; null when there is none.
ComPtr<IMMDevice> deviceFor(IMMDeviceEnumerator* enumerator, const QByteArray& id)
{
    ComPtr<IMMDevice> device;
    // An endpoint that is unplugged or disabled is still found.
    DWORD state = 0;
    const bool found = !id.isEmpty() &&
                       SUCCEEDED(enumerator->GetDevice(QString::fromUtf8(id).toStdWString().c_str(), &device)) &&
                       SUCCEEDED(device->GetState(&state)) && state == DEVICE_STATE_ACTIVE;
    if (!found)
        enumerator->GetDefaultAudioEndpoint(eRender, eConsole, device.ReleaseAndGetAddressOf());
    return device;
}

} // namespace

WasapiLoopbackWorker::WasapiLoopbackWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                           bool limiter, quint32 streamFlags)
    : LoopbackWorker(deviceId, format, gain, limiter), m_streamFlags(streamFlags)
{
}

void WasapiLoopbackWorker::run()
{
    const ComApartment apartment(COINIT_MULTITHREADED);
    const QString error = record();
    if (!error.isEmpty())
        Q_EMIT failed(error);
}

QString WasapiLoopbackWorker::record()
{
    HRESULT result = S_OK;
    const ComPtr<IMMDeviceEnumerator> enumerator = Wasapi::createEnumerator(result);
    if (!enumerator)
        return tr("Could not create the audio device enumerator (0x%1).").arg(quoted(result));
    const ComPtr<IMMDevice> device = deviceFor(enumerator.Get(), deviceId());
    if (!device)
        return noDeviceText();
    Q_EMIT endpointResolved(Wasapi::friendlyName(device.Get()));

    ComPtr<IAudioClient> client;
    result =
        device->Activate(__uuidof(IAudioClient), CLSCTX_ALL, nullptr, reinterpret_cast<void**>(client.GetAddressOf()));
    if (FAILED(result))
        return tr("Could not activate the audio client (0x%1).").arg(quoted(result));
    WAVEFORMATEX* format = nullptr;
    if (FAILED(client->GetMixFormat(&format)))
        return tr("Could not read the device mix format.");
    const std::unique_ptr<WAVEFORMATEX, ComMemoryRelease> formatOwner(format);
    result = client->Initialize(AUDCLNT_SHAREMODE_SHARED, m_streamFlags, BufferDuration, 0, format, nullptr);
    if (FAILED(result))
        return tr("Could not initialise loopback capture (0x%1).").arg(quoted(result));
    ComPtr<IAudioCaptureClient> packets;
    if (FAILED(client->GetService(IID_PPV_ARGS(&packets))))
        return tr("Could not obtain the capture service.");
    const qsizetype formatBytes = qsizetype(sizeof *format) + format->cbSize;
    const auto mix = MixFormat::fromWaveFormat({reinterpret_cast<const char*>(format), formatBytes});
    if (FAILED(client->Start()))
        return startFailedText();
    const auto stopped = qScopeGuard([&client] { client->Stop(); });

    setMixFormat(mix);
    while (!stopRequested() && drain(packets.Get())) {
        keepTime();
        msleep(PollMs);
    }
    return {};
}

/// Delivers all packets that are there. \return false when the device has failed.
bool WasapiLoopbackWorker::drain(IAudioCaptureClient* packets)
{
    UINT32 next = 0; // frames
    HRESULT result = packets->GetNextPacketSize(&next);
    while (SUCCEEDED(result) && next != 0 && !stopRequested()) {
        BYTE* samples = nullptr;
        UINT32 frames = 0;
        DWORD flags = 0;
        if (FAILED(packets->GetBuffer(&samples, &frames, &flags, nullptr, nullptr)) || frames == 0)
            return true;
        deliver((flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0 ? nullptr : samples, frames);
        packets->ReleaseBuffer(frames);
        result = packets->GetNextPacketSize(&next);
    }
    if (FAILED(result))
        qCWarning(lcWasapi, "the device has failed (0x%08lx)", static_cast<unsigned long>(result));
    return SUCCEEDED(result);
}
