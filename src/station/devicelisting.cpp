#include "station/devicelisting.h"

#include "settings/choices.h"
#include "triggers/midiinput.h"

namespace {

constexpr qsizetype MaxNameLength = 200;

QString printable(const QString& name)
{
    QString shown;
    for (const QChar c : name) {
        switch (c.category()) {
        case QChar::Other_Control:
        case QChar::Other_Format: // it would turn the direction of the line
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            break;
        default:
            shown += c;
        }
    }
    shown.truncate(MaxNameLength);
    if (!shown.isEmpty() && shown.back().isHighSurrogate())
        shown.chop(1); // half a character
    return shown;
}

QString setting(const char* key, const QByteArray& value)
{
    return QLatin1String(key) + u'=' + QString::fromLatin1(value.toPercentEncoding());
}

template <class Number>
QString setting(const char* key, Number value)
{
    return setting(key, QByteArray::number(int(value)));
}

/// A headline and below it the devices: one line with the name, and one with the settings.
class Section {
public:
    explicit Section(const QString& headline) : m_headline(headline) {}
    void add(const QString& name, const QStringList& settings)
    {
        m_lines += QStringLiteral("  %1\n    %2\n").arg(name, settings.join(u' '));
    }
    QString text(const QString& ifEmpty) const
    {
        return m_headline + u'\n' + (m_lines.isEmpty() ? QStringLiteral("  %1\n").arg(ifEmpty) : m_lines);
    }

private:
    QString m_headline;
    QString m_lines;
};

} // namespace

QString DeviceListing::text(const DeviceList& devices, const QList<SerialTrigger::Port>& serialPorts,
                            const QStringList& midiInputs)
{
    Section inputs(tr("Input devices"));
    for (const InputDevice& device : devices.inputs) {
        QStringList settings{setting("capture/backend", CaptureBackend::InputDevice),
                             setting("capture/deviceId", device.id)};
        inputs.add(tr("%1 (channels: %2)").arg(printable(device.label), QString::number(device.channels)), settings);
    }
    Section playback(tr("Playback devices"));
    for (const PlaybackDevice& device : devices.playback)
        playback.add(printable(device.name),
                     {setting("capture/backend", CaptureBackend::Loopback), setting("capture/playbackId", device.id)});
    Section serial(tr("Serial ports"));
    for (const SerialTrigger::Port& port : serialPorts)
        serial.add(printable(port.label), {setting("trigger/kind", TriggerKind::SerialLine),
                                           setting("trigger/serialPort", port.name.toUtf8())});
    Section midi(tr("MIDI inputs"));
    for (int i = 0; i < midiInputs.size(); ++i)
        midi.add(printable(midiInputs.at(i)),
                 {setting("trigger/kind", TriggerKind::Midi), setting("trigger/midiDevice", i),
                  setting("trigger/midiDeviceName", midiInputs.at(i).toUtf8())});

    const QString none = tr("none found");
    const QStringList hints{
        tr("Below each device stand the settings that choose it. Their values are percent-encoded: %20 is a space."),
        tr("An empty capture/deviceId or capture/playbackId is the system's default device."),
        tr("Of an input device, capture/firstChannel=3 capture/channelCount=2 records channels 3 and 4 alone."),
        tr("For text commands on a serial port, set trigger/kind=2 in place of 1."),
    };
    return inputs.text(none) + playback.text(none) + serial.text(none) + midi.text(none) + u'\n' + hints.join(u'\n') +
           u'\n';
}

QString DeviceListing::current()
{
    return text(DeviceList::current(), SerialTrigger::ports(), MidiInput::deviceNames());
}
