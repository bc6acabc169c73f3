#include "capture/devicelist.h"

#include "capture/pulseconnection_linux.h"

using namespace std::chrono_literals;

/// Not by QMediaDevices, which names the same devices but waits for ever for a sound server that hangs.
DeviceList DeviceList::current()
{
    constexpr auto AtMost = 2s;
    PulseConnection server;
    server.waitForLists(AtMost);
    DeviceList list;
    for (const PulseSource& source : server.sources()) {
        if (!source.isMonitor)
            list.inputs.append({source.name, source.description, source.format.channels});
    }
    for (const PulseSink& sink : server.sinks())
        list.playback.append({sink.name, sink.description});
    return list;
}
