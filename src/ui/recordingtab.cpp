#include "ui/recordingtab.h"

#include "capture/capturefactory.h"
#include "capture/channelpick.h"
#include "capture/loopback.h"
#include "process/ffmpeg.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int SampleRates[] = {8000, 11025, 16000, 22050, 32000, 44100, 48000}; // Hz
constexpr int Bitrates[] = {16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 256, 320}; // kbit/s

} // namespace

RecordingTab::RecordingTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent)
    : QWidget(parent),
      m_inputId(settings.deviceId),
      m_inputLabel(settings.deviceLabel),
      m_playbackId(settings.playbackId)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(buildSource(settings, binding));
    layout->addWidget(buildFormat(settings, binding));
    layout->addStretch();
    chooseSource();
    updateCodecOptions();
}

QGroupBox* RecordingTab::buildSource(AppSettings& settings, SettingsBinding& binding)
{
    m_backend = new QComboBox;
    m_backend->addItem(tr("Playback device (loopback)"), int(CaptureBackend::Loopback));
    m_backend->addItem(tr("Input device"), int(CaptureBackend::InputDevice));
    m_backend->addItem(tr("Internet stream (URL)"), int(CaptureBackend::Stream));
    binding.bind(m_backend, settings.backend);
    connect(m_backend, &QComboBox::currentIndexChanged, this, &RecordingTab::chooseSource);

    m_device = new QComboBox;
    m_device->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_device->setMinimumContentsLength(30);
    m_device->setPlaceholderText(tr("(default device)"));
    connect(m_device, &QComboBox::currentIndexChanged, this, &RecordingTab::onDeviceChosen);
    binding.onWrite([this, &settings] {
        settings.deviceId = m_inputId;
        settings.deviceLabel = m_inputLabel;
        settings.playbackId = m_playbackId;
    });
    auto* refresh = new QPushButton(tr("&Refresh"));
    connect(refresh, &QPushButton::clicked, this, &RecordingTab::listDevices);
    auto* devices = new QHBoxLayout;
    devices->addWidget(m_device, 1);
    devices->addWidget(refresh);

    auto* url = new QLineEdit;
    url->setToolTip(tr("Icecast, Shoutcast, HLS or plain HTTP. Requires ffmpeg."));
    url->setPlaceholderText(QStringLiteral("https://stream.station.example/live.mp3"));
    binding.bind(url, settings.streamUrl);
    auto* reconnect = new QCheckBox(tr("Reconnect automatically"));
    binding.bind(reconnect, settings.streamReconnect);
    m_currentSource = new QLabel;
    m_currentSource->setTextFormat(Qt::RichText);
    m_currentSource->setWordWrap(true);

    auto* group = new QGroupBox(tr("Recording source"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("Capture from:"), m_backend);
    form->addRow(tr("Device:"), devices);
    qobject_cast<QLabel*>(form->labelForField(devices))->setBuddy(m_device);
    form->addRow(tr("Stream URL:"), url);
    form->addRow(reconnect);
    form->addRow(m_currentSource);
    form->addRow(tr("Channels of the device:"), buildDeviceChannels(settings, binding));
    return group;
}

QComboBox* RecordingTab::buildDeviceChannels(AppSettings& settings, SettingsBinding& binding)
{
    m_deviceChannels = new QComboBox;
    m_deviceChannels->setToolTip(tr("A sound card with many inputs may carry several programmes. Choose the pair of "
                                    "channels, or the single one, that is to be recorded here."));
    const auto add = [this](const ChannelPick& pick) {
        const QString text = pick.isEverything() ? tr("as the device delivers")
                             : pick.count == 1   ? tr("%1 only").arg(pick.numbers())
                                                 : pick.numbers();
        m_deviceChannels->addItem(text, QVariant::fromValue(pick));
    };
    for (const ChannelPick& pick : ChannelPick::choices())
        add(pick);
    const auto stored = ChannelPick::fromSettings(settings.firstChannel, settings.channelCount);
    if (m_deviceChannels->findData(QVariant::fromValue(stored)) < 0)
        add(stored); // a pair that begins with an even number
    m_deviceChannels->setCurrentIndex(m_deviceChannels->findData(QVariant::fromValue(stored)));
    binding.onWrite([this, &settings] {
        const auto pick = m_deviceChannels->currentData().value<ChannelPick>();
        if (pick == ChannelPick::fromSettings(settings.firstChannel, settings.channelCount))
            return; // numbers that make no sense stay as they are
        settings.firstChannel = pick.first;
        settings.channelCount = pick.count == 1 ? 1 : 2;
    });
    return m_deviceChannels;
}

QGroupBox* RecordingTab::buildFormat(AppSettings& settings, SettingsBinding& binding)
{
    m_codec = new QComboBox;
    // Those that ffmpeg compresses first.
    for (const bool compressed : {true, false}) {
        for (const CodecRow& row : Codecs) {
            if ((row.ffmpegCodec != nullptr) == compressed)
                m_codec->addItem(tr(row.label), QString::fromLatin1(row.extension));
        }
    }
    m_codec->setCurrentIndex(m_codec->findData(codecExtension(settings.codec)));
    binding.onWrite([this, &settings] { settings.codec = codec(); });
    connect(m_codec, &QComboBox::currentIndexChanged, this, &RecordingTab::updateCodecOptions);

    m_sampleRate = new QComboBox;
    for (const int rate : SampleRates)
        m_sampleRate->addItem(tr("%1 Hz").arg(rate), rate);
    binding.bind(m_sampleRate, settings.sampleRate, tr("%1 Hz").arg(settings.sampleRate));
    m_bitrate = new QComboBox;
    for (const int rate : Bitrates)
        m_bitrate->addItem(tr("%1 kbps").arg(rate), rate);
    binding.bind(m_bitrate, settings.bitrate, tr("%1 kbps").arg(settings.bitrate));
    m_channels = new QComboBox;
    m_channels->addItem(tr("mono"), 1);
    m_channels->addItem(tr("stereo"), 2);
    binding.bind(m_channels, settings.channels);
    m_vorbisQuality = new QSpinBox;
    m_vorbisQuality->setRange(-1, 10);
    binding.bind(m_vorbisQuality, settings.vorbisQuality);

    for (const QComboBox* box : {m_codec, m_sampleRate, m_bitrate, m_channels})
        connect(box, &QComboBox::currentIndexChanged, this, &RecordingTab::formatChanged);
    connect(m_vorbisQuality, &QSpinBox::valueChanged, this, &RecordingTab::formatChanged);

    auto* gain = new QDoubleSpinBox;
    gain->setRange(-24.0, 24.0);
    gain->setSingleStep(0.5);
    gain->setDecimals(1);
    gain->setSuffix(tr(" dB"));
    binding.bind(gain, settings.inputGainDb);
    auto* limit = new QCheckBox(tr("Limit peaks instead of clipping"));
    limit->setToolTip(tr("A loopback mix can exceed 0 dBFS. With this on, overshoots are rounded off just below full "
                         "scale instead of being clipped flat."));
    binding.bind(limit, settings.softLimit);

    auto* group = new QGroupBox(tr("Recording format"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("Codec:"), m_codec);
    form->addRow(tr("Sample rate:"), m_sampleRate);
    form->addRow(tr("Bit rate:"), m_bitrate);
    form->addRow(tr("Channels:"), m_channels);
    form->addRow(tr("Ogg quality:"), m_vorbisQuality);
    form->addRow(tr("Input gain:"), gain);
    form->addRow(limit);
    return group;
}

int RecordingTab::backend() const
{
    return m_backend->currentData().toInt();
}

RecordingFormat RecordingTab::format() const
{
    return {codec(), m_sampleRate->currentData().toInt(), m_channels->currentData().toInt(),
            m_bitrate->currentData().toInt(), m_vorbisQuality->value()};
}

int RecordingTab::codec() const
{
    return codecFromExtension(m_codec->currentData().toString());
}

void RecordingTab::chooseSource()
{
    const auto kind = CaptureBackend(backend());
    m_device->setEnabled(kind != CaptureBackend::Stream);
    m_deviceChannels->setEnabled(kind != CaptureBackend::Stream && kind != CaptureBackend::Loopback);
    listDevices();
}

/// Fills the box with the devices of the chosen kind. The stored one is among them even when it is not there just now:
/// it must not silently become another.
void RecordingTab::listDevices()
{
    const QSignalBlocker quiet(m_device);
    m_device->clear();
    QByteArray stored;
    QString storedLabel;
    switch (CaptureBackend(backend())) {
    case CaptureBackend::Loopback:
        m_device->addItem(tr("Default playback device"), QByteArray());
        for (const auto& [id, name] : playbackDevices())
            m_device->addItem(name, id);
        stored = m_playbackId;
        storedLabel = QString::fromUtf8(m_playbackId);
        break;
    case CaptureBackend::InputDevice:
        for (const QAudioDevice& device : inputDevices())
            m_device->addItem(device.description(), device.id());
        stored = m_inputId;
        if (const int found = m_device->findData(stored); found >= 0)
            m_inputLabel = m_device->itemText(found); // it may have been given another name
        storedLabel = m_inputLabel.isEmpty() ? QString::fromUtf8(m_inputId) : m_inputLabel;
        break;
    case CaptureBackend::Stream:
        break;
    }
    if (!stored.isEmpty() && m_device->findData(stored) < 0)
        m_device->addItem(storedLabel, stored);
    m_device->setCurrentIndex(m_device->findData(stored));
    showCurrentSource();
}

void RecordingTab::onDeviceChosen(int index)
{
    if (index < 0)
        return;
    if (CaptureBackend(backend()) == CaptureBackend::Loopback) {
        m_playbackId = m_device->itemData(index).toByteArray();
    } else {
        m_inputId = m_device->itemData(index).toByteArray();
        m_inputLabel = m_device->itemText(index);
    }
    showCurrentSource();
}

void RecordingTab::showCurrentSource()
{
    QString source = m_device->currentText();
    if (m_device->currentData().toByteArray().isEmpty())
        source.clear();
    if (CaptureBackend(backend()) == CaptureBackend::Stream)
        source = ffmpegAvailable() ? tr("(decoded by ffmpeg)") : tr("(ffmpeg not found - stream logging unavailable)");
    else if (source.isEmpty())
        source = tr("(default device)");
    m_currentSource->setText(tr("<b>Current source:</b> %1").arg(source.toHtmlEscaped()));
}

void RecordingTab::updateCodecOptions()
{
    const CodecRow& row = codecRow(codec());
    m_bitrate->setEnabled(row.size == CodecRow::Size::Bitrate);
    m_vorbisQuality->setEnabled(row.size == CodecRow::Size::VorbisQuality);
    m_codec->setToolTip(row.unavailable && !ffmpegAvailable() ? tr(row.unavailable) : QString());
    Q_EMIT codecChanged(codec());
}
