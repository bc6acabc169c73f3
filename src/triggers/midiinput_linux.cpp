#include "triggers/midiinput.h"

#include <QLoggingCategory>

#include <RtMidi.h>

#include <string>
#include <vector>

Q_LOGGING_CATEGORY(lcMidi, "tidewell.midi")

namespace {

constexpr char ClientName[] = "Tidewell";

/// With this set, RtMidi reports here instead of printing and throwing, except out of its constructors.
void onRtMidiError(RtMidiError::Type type, const std::string& text, void* worst)
{
    qCDebug(lcMidi) << "RtMidi" << int(type) << QString::fromStdString(text);
    if (worst && type > RtMidiError::DEBUG_WARNING)
        *static_cast<RtMidiError::Type*>(worst) = type;
}

/// The ALSA sequencer where there is one, else JACK; null when there is neither.
std::unique_ptr<RtMidiIn> connectToSystem()
{
    for (const RtMidi::Api api : {RtMidi::LINUX_ALSA, RtMidi::UNIX_JACK}) {
        try {
            auto input = std::make_unique<RtMidiIn>(api, ClientName);
            input->setErrorCallback(onRtMidiError);
            return input;
        } catch (const RtMidiError& error) {
            qCDebug(lcMidi) << QString::fromStdString(error.getMessage());
        }
    }
    return nullptr;
}

QStringList namesOf(RtMidiIn* input)
{
    QStringList names;
    const unsigned count = input ? input->getPortCount() : 0;
    for (unsigned index = 0; index < count; ++index)
        names << QString::fromStdString(input->getPortName(index));
    return names;
}

} // namespace

struct MidiInput::SystemDevice : Device {
    Handler handler; ///< outlives the input, which calls it
    std::unique_ptr<RtMidiIn> input;

    ~SystemDevice() override
    {
        // Not cancelCallback() first: it takes the handler away from under a message that is just coming in.
        if (input)
            input->closePort();
    }
    QStringList namesNow() const override { return namesOf(input.get()); }
    static void onMessage(double, std::vector<unsigned char>* bytes, void* user)
    {
        quint32 message = 0;
        for (size_t i = 0; i < bytes->size() && i < 3; ++i)
            message |= quint32((*bytes)[i]) << (8 * i);
        static_cast<const SystemDevice*>(user)->handler(message);
    }
};

QStringList MidiInput::deviceNames()
{
    return namesOf(connectToSystem().get());
}

int MidiInput::open(int index, Handler handler)
{
    close();
    auto device = std::make_unique<SystemDevice>();
    device->handler = std::move(handler);
    device->input = connectToSystem();
    if (!device->input)
        return RtMidiError::NO_DEVICES_FOUND;
    RtMidiError::Type worst = RtMidiError::WARNING;
    device->input->setErrorCallback(onRtMidiError, &worst);
    device->input->setCallback(SystemDevice::onMessage, device.get());
    device->input->openPort(unsigned(index), ClientName);
    device->input->setErrorCallback(onRtMidiError);
    if (worst != RtMidiError::WARNING)
        return worst;
    m_device = std::move(device);
    return 0;
}
