#include "capture/audiosourcecapture_win.h"

#include "capture/pcmconvert.h"
#include "capture/qtaudiocapture.h"
#include "settings/appsettings.h"

#include <QAudioSource>

#include <utility>

using namespace std::chrono_literals;

namespace {

/// Bounds the latency and the size of a chunk.
constexpr qint64 BufferMicroseconds = 100'000;
/// A device that was just plugged in may be listed before it can be opened.
constexpr auto ReopenInterval = 2s;

/// The input device of this identifier; null when it is not there.
QAudioDevice listedDevice(const QByteArray& id)
{
    const auto devices = QMediaDevices::audioInputs();
    for (const QAudioDevice& device : devices) {
        if (device.id() == id)
            return device;
    }
    return {};
}

QAudioDevice chosenDevice(const QByteArray& id)
{
    const QAudioDevice device = id.isEmpty() ? QAudioDevice() : listedDevice(id);
    return device.isNull() ? QMediaDevices::defaultAudioInput() : device;
}

/// The wanted format where the device takes it, else the device's own; conversion deals with the difference. Only the
/// device's own format has all of its channels, each in its place.
QAudioFormat negotiate(const QAudioDevice& device, const PcmFormat& wanted, const ChannelPick& pick)
{
    if (!pick.isEverything())
        return device.preferredFormat();
    QAudioFormat format;
    format.setSampleFormat(QAudioFormat::Int16);
    format.setChannelCount(wanted.channels);
    format.setSampleRate(wanted.sampleRate);
    return device.isFormatSupported(format) ? format : device.preferredFormat();
}

} // namespace

AudioSourceCapture::AudioSourceCapture(const QByteArray& deviceId, QObject* parent)
    : AudioCapture(parent), m_deviceId(deviceId)
{
    connect(&m_devices, &QMediaDevices::audioInputsChanged, this, &AudioSourceCapture::onInputsChanged);
    m_reopen.setSingleShot(true);
    connect(&m_reopen, &QTimer::timeout, this, &AudioSourceCapture::onInputsChanged);
}

AudioSourceCapture::~AudioSourceCapture()
{
    AudioSourceCapture::stop();
}

bool AudioSourceCapture::start(const PcmFormat& format)
{
    stop();
    m_target = format;
    const AppSettings& settings = AppSettings::instance();
    m_pick = ChannelPick::fromSettings(settings.firstChannel, settings.channelCount);
    m_device = chosenDevice(m_deviceId);
    const QString failure = m_device.isNull() ? QtAudioCapture::noDeviceText() : open(m_device);
    if (!failure.isEmpty())
        Q_EMIT errorOccurred(failure);
    return failure.isEmpty();
}

/// Records this device from now on. When that fails, all stays as it was.
/// \return what is wrong, or nothing.
QString AudioSourceCapture::open(const QAudioDevice& device)
{
    // Not maximumChannelCount(): that is as many as the system could make of the device's.
    if (const int channels = device.preferredFormat().channelCount(); !m_pick.fits(channels))
        return QtAudioCapture::lacksChannelsText(m_pick, device.description(), channels);
    const QAudioFormat format = negotiate(device, m_target, m_pick);
    if (!device.isFormatSupported(format))
        return QtAudioCapture::formatRefusedText(device.description());
    // Without a parent: it deletes itself later, as it may be its own signal that leads to that.
    decltype(m_source) source(new QAudioSource(device, format));
    source->setBufferSize(format.bytesForDuration(BufferMicroseconds));
    QIODevice* const io = source->start();
    if (!io)
        return QtAudioCapture::openFailedText();

    discardSource();
    m_device = device;
    m_format = format;
    m_resampler.init(m_target.channels, m_format.sampleRate(), m_target.sampleRate);
    m_source = std::move(source);
    m_io = io;
    connect(m_source.get(), &QAudioSource::stateChanged, this, &AudioSourceCapture::onStateChanged);
    connect(m_io, &QIODevice::readyRead, this, &AudioSourceCapture::onReadyRead);
    return {};
}

void AudioSourceCapture::stop()
{
    if (!m_source)
        return;
    discardSource();
    Q_EMIT runningChanged(false);
}

void AudioSourceCapture::discardSource()
{
    if (!m_source)
        return;
    // Told apart first: stopping changes the source's state, and nobody wants to hear of that any more.
    m_source->disconnect(this);
    if (m_io)
        m_io->disconnect(this);
    m_source->stop();
    m_source.reset();
    m_io = nullptr;
}

void AudioSourceCapture::onReadyRead()
{
    if (!m_io)
        return;
    const QByteArray bytes = m_io->readAll();
    if (bytes.isEmpty())
        return;

    const AppSettings& settings = AppSettings::instance();
    quint64 overs = 0;
    const GainStage gain{GainStage::factorFromDb(settings.inputGainDb), settings.softLimit, &overs};
    const QByteArray block = convertToS16(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size(), m_format,
                                          m_target.channels, gain, m_pick);
    if (overs > 0)
        Q_EMIT overloadDetected();
    const QByteArray resampled = m_resampler.process(block);
    if (!resampled.isEmpty())
        Q_EMIT dataReady(resampled);
}

void AudioSourceCapture::onStateChanged()
{
    if (!m_source)
        return;
    const QAudio::Error error = m_source->error();
    if (error == QAudio::NoError || error == QAudio::UnderrunError)
        return;
    Q_EMIT errorOccurred(listedDevice(m_device.id()).isNull() ? QtAudioCapture::removedText(m_device.description())
                                                              : QtAudioCapture::inputErrorText(error));
}

void AudioSourceCapture::onInputsChanged()
{
    if (!m_source)
        return;
    if (listedDevice(m_device.id()).isNull()) {
        Q_EMIT errorOccurred(QtAudioCapture::removedText(m_device.description()));
        return;
    }
    if (m_deviceId.isEmpty() || m_device.id() == m_deviceId)
        return;
    const QAudioDevice chosen = listedDevice(m_deviceId);
    if (chosen.isNull())
        return;
    if (open(chosen).isEmpty())
        Q_EMIT warning(QtAudioCapture::returnedText(m_device.description()));
    else
        m_reopen.start(ReopenInterval);
}
