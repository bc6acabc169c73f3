#include "capture/devicelist.h"

#include "capture/capturefactory.h"

DeviceList DeviceList::current()
{
    DeviceList list;
    for (const QAudioDevice& device : inputDevices()) {
        // Its own format's: the maximum is what the system could make of them.
        list.inputs.append({device.id(), device.description(), device.preferredFormat().channelCount()});
    }
    list.playback = playbackDevices();
    return list;
}
