#include "capture/qtaudiocapture.h"

#include "capture/channelreader.h"
#include "capture/pcmconvert.h"
#include "settings/appsettings.h"

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
    const AppSettings& settings = AppSettings::instance();
    m_pick = ChannelPick::fromSettings(settings.firstChannel, settings.channelCount);
    // Not maximumChannelCount(): that is as many as the server could make of the device's.
    if (const int channels = m_device.preferredFormat().channelCount(); !m_pick.fits(channels)) {
        Q_EMIT errorOccurred(lacksChannelsText(m_pick, m_device.description(), channels));
        return false;
    }
    if (!m_pick.isEverything())
        m_reader.reset(createChannelReader(m_device, m_pick, nullptr));
    if (m_reader ? !startReader() : !startSource())
        return false;
    Q_EMIT runningChanged(true);
    return true;
}

bool QtAudioCapture::startSource()
{
    m_format = negotiate(m_device, m_target, m_pick);
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
        Q_EMIT errorOccurred(openFailedText());
        discardSource();
        return false;
    }
    connect(m_io, &QIODevice::readyRead, this, &QtAudioCapture::onReadyRead);
    return true;
}

/// That the reader ends is no news: as with a source, its error is told, and the consumer decides.
bool QtAudioCapture::startReader()
{
    connect(m_reader.get(), &AudioCapture::dataReady, this, &AudioCapture::dataReady);
    connect(m_reader.get(), &AudioCapture::errorOccurred, this, &AudioCapture::errorOccurred);
    connect(m_reader.get(), &AudioCapture::overloadDetected, this, &AudioCapture::overloadDetected);
    if (m_reader->start(m_target))
        return true;
    discardReader();
    return false;
}

void QtAudioCapture::stop()
{
    if (!isRunning())
        return;
    m_reader ? discardReader() : discardSource();
    Q_EMIT runningChanged(false);
}

/// Has it deleted later: it may be its own signal that leads here.
void QtAudioCapture::discardReader()
{
    m_reader->disconnect(this);
    m_reader->stop();
    m_reader.reset();
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
                                          m_target.channels, gain, m_pick);
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
        Q_EMIT errorOccurred(inputErrorText(error));
}

QString QtAudioCapture::openFailedText()
{
    return tr("Could not open the audio input device.");
}

QString QtAudioCapture::inputErrorText(QAudio::Error error)
{
    return tr("Audio input error (code %1).").arg(int(error));
}

QString QtAudioCapture::lacksChannelsText(const ChannelPick& pick, const QString& device, int channels)
{
    const QString text = pick.count == 1 ? tr("Channel %1 was asked for, but the device %2 has only %3.")
                                         : tr("Channels %1 were asked for, but the device %2 has only %3.");
    return text.arg(pick.numbers(), device, QString::number(channels));
}
