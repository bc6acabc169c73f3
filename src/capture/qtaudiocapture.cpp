#include "capture/qtaudiocapture.h"

#include "app/appsettings.h"
#include "capture/pcmconvert.h"

#include <QAudioSource>
#include <QMediaDevices>

namespace {

/// Bounds the latency and the size of a chunk.
constexpr qint64 BufferMicroseconds = 100'000;

QAudioDevice chosenDevice(const QByteArray& id)
{
    if (!id.isEmpty()) {
        const auto devices = QMediaDevices::audioInputs();
        for (const QAudioDevice& device : devices) {
            if (device.id() == id)
                return device;
        }
    }
    return QMediaDevices::defaultAudioInput();
}

/// The wanted format where the device takes it, else the device's own; conversion deals with the difference.
QAudioFormat negotiate(const QAudioDevice& device, const PcmFormat& wanted)
{
    QAudioFormat format;
    format.setSampleFormat(QAudioFormat::Int16);
    format.setChannelCount(wanted.channels);
    format.setSampleRate(wanted.sampleRate);
    return device.isFormatSupported(format) ? format : device.preferredFormat();
}

} // namespace

QtAudioCapture::QtAudioCapture(const QByteArray& deviceId, QObject* parent) : AudioCapture(parent), m_deviceId(deviceId)
{
}

QtAudioCapture::~QtAudioCapture()
{
    stop();
}

QString QtAudioCapture::description() const
{
    return m_device.isNull() ? tr("(no input device)") : m_device.description();
}

bool QtAudioCapture::start(const PcmFormat& format)
{
    stop();
    m_target = format;
    m_device = chosenDevice(m_deviceId);
    if (m_device.isNull()) {
        Q_EMIT errorOccurred(tr("No audio input device is available."));
        return false;
    }
    m_format = negotiate(m_device, format);
    if (!m_device.isFormatSupported(m_format)) {
        Q_EMIT errorOccurred(tr("The device %1 does not accept a usable capture format.").arg(m_device.description()));
        return false;
    }
    m_resampler.init(m_target.channels, m_format.sampleRate(), m_target.sampleRate);

    // Without a parent: PulseAudio's source processes events while it is destroyed, and as our child it could then be
    // destroyed a second time, by our own deferred deletion.
    m_source.reset(new QAudioSource(m_device, m_format));
    m_source->setBufferSize(m_format.bytesForDuration(BufferMicroseconds));
    connect(m_source.get(), &QAudioSource::stateChanged, this, &QtAudioCapture::onStateChanged);
    m_io = m_source->start();
    if (!m_io) {
        Q_EMIT errorOccurred(tr("Could not open the audio input device."));
        discardSource();
        return false;
    }
    connect(m_io, &QIODevice::readyRead, this, &QtAudioCapture::onReadyRead);
    Q_EMIT runningChanged(true);
    return true;
}

void QtAudioCapture::stop()
{
    if (!m_source)
        return;
    discardSource();
    Q_EMIT runningChanged(false);
}

/// Stops the source and has it deleted later: it may be its own signal that leads here.
void QtAudioCapture::discardSource()
{
    // Told apart first: stopping changes the source's state, and nobody wants to hear of that any more.
    m_source->disconnect(this);
    if (m_io)
        m_io->disconnect(this);
    m_source->stop();
    m_source.reset();
    m_io = nullptr;
}

void QtAudioCapture::onReadyRead()
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
                                          m_target.channels, gain);
    if (overs > 0)
        Q_EMIT overloadDetected();
    const QByteArray resampled = m_resampler.process(block);
    if (!resampled.isEmpty())
        Q_EMIT dataReady(resampled);
}

void QtAudioCapture::onStateChanged()
{
    if (!m_source)
        return;
    const QAudio::Error error = m_source->error();
    if (error != QAudio::NoError && error != QAudio::UnderrunError)
        Q_EMIT errorOccurred(tr("Audio input error (code %1).").arg(int(error)));
}
