#include "capture/loopback.h"

#include "capture/pulseconnection_linux.h"
#include "capture/pulseloopbackcapture_linux.h"

#include <chrono>

using namespace std::chrono_literals;

QList<PlaybackDevice> playbackDevices()
{
    constexpr auto AtMost = 2s;
    PulseConnection server;
    server.waitForLists(AtMost);
    QList<PlaybackDevice> devices;
    for (const PulseSink& sink : server.sinks())
        devices.append({sink.name, sink.description});
    return devices;
}

AudioCapture* createLoopbackCapture(const QByteArray& deviceId, QObject* parent)
{
    return new PulseLoopbackCapture(deviceId, parent);
}
