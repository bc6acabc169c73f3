#include "triggers/midiinput.h"

#include <windows.h>

#include <mmsystem.h>

struct MidiInput::SystemDevice : Device {
    HMIDIIN handle = nullptr;
    Handler handler;

    ~SystemDevice() override
    {
        if (!handle)
            return;
        // Reset before close, so that no message is on its way when the handle is gone.
        midiInStop(handle);
        midiInReset(handle);
        midiInClose(handle);
    }
    QStringList namesNow() const override { return deviceNames(); }
    static void CALLBACK onMessage(HMIDIIN, UINT kind, DWORD_PTR user, DWORD_PTR message, DWORD_PTR)
    {
        if (kind == MIM_DATA && user != 0)
            reinterpret_cast<const SystemDevice*>(user)->handler(quint32(message));
    }
};

QStringList MidiInput::deviceNames()
{
    QStringList names;
    const UINT count = midiInGetNumDevs();
    for (UINT index = 0; index < count; ++index) {
        MIDIINCAPSW caps = {};
        midiInGetDevCapsW(index, &caps, sizeof caps);
        names << QString::fromWCharArray(caps.szPname);
    }
    return names;
}

int MidiInput::open(int index, Handler handler)
{
    close();
    auto device = std::make_unique<SystemDevice>();
    device->handler = std::move(handler);
    const MMRESULT result =
        midiInOpen(&device->handle, UINT(index), reinterpret_cast<DWORD_PTR>(&SystemDevice::onMessage),
                   reinterpret_cast<DWORD_PTR>(device.get()), CALLBACK_FUNCTION);
    if (result != MMSYSERR_NOERROR)
        return int(result);
    midiInStart(device->handle);
    m_device = std::move(device);
    return 0;
}
