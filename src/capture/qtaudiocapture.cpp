#include "capture/qtaudiocapture.h"

QtAudioCapture::QtAudioCapture(const QByteArray& deviceId, QObject* parent)
    : AudioCapture(parent), m_reader(createReader(deviceId, this))
{
    connect(m_reader, &AudioCapture::dataReady, this, &AudioCapture::dataReady);
    connect(m_reader, &AudioCapture::errorOccurred, this, &AudioCapture::errorOccurred);
    connect(m_reader, &AudioCapture::warning, this, &AudioCapture::warning);
    connect(m_reader, &AudioCapture::overloadDetected, this, &AudioCapture::overloadDetected);
}

QtAudioCapture::~QtAudioCapture()
{
    QtAudioCapture::stop();
}

QString QtAudioCapture::description() const
{
    const QString device = m_reader->description();
    return device.isEmpty() ? tr("(no input device)") : device;
}

bool QtAudioCapture::start(const PcmFormat& format)
{
    stop();
    if (!m_reader->start(format))
        return false;
    m_running = true;
    Q_EMIT runningChanged(true);
    return true;
}

void QtAudioCapture::stop()
{
    if (!m_running)
        return;
    m_running = false;
    m_reader->stop();
    Q_EMIT runningChanged(false);
}

QString QtAudioCapture::noDeviceText()
{
    return tr("No audio input device is available.");
}

QString QtAudioCapture::formatRefusedText(const QString& device)
{
    return tr("The device %1 does not accept a usable capture format.").arg(device);
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

QString QtAudioCapture::removedText(const QString& device)
{
    return tr("The audio input device %1 was removed.").arg(device);
}

QString QtAudioCapture::returnedText(const QString& device)
{
    return tr("The audio input device %1 is back and is recorded again.").arg(device);
}
