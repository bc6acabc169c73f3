#include "capture/loopback.h"

#include "capture/wasapiendpoints_win.h"
#include "capture/wasapiloopbackcapture_win.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;

namespace {

struct Found {
    std::mutex mutex;
    std::condition_variable finished;
    QList<PlaybackDevice> devices;
    bool complete = false;
};

void find(Found& found)
{
    const ComApartment apartment(COINIT_APARTMENTTHREADED);
    Wasapi::eachEndpoint(eRender, [&found](const PlaybackDevice& device) {
        const std::lock_guard lock(found.mutex);
        found.devices.append(device);
    });
    const std::lock_guard lock(found.mutex);
    found.complete = true;
    found.finished.notify_one();
}

} // namespace

QList<PlaybackDevice> playbackDevices()
{
    constexpr auto AtMost = 2s;
    // On a thread of its own, since the calls have no time limit: should the audio service hang, it stays behind.
    const auto found = std::make_shared<Found>();
    std::thread([found] { find(*found); }).detach();
    std::unique_lock lock(found->mutex);
    found->finished.wait_for(lock, AtMost, [&found] { return found->complete; });
    return found->devices;
}

AudioCapture* createLoopbackCapture(const QByteArray& deviceId, QObject* parent)
{
    return new WasapiLoopbackCapture(deviceId, parent);
}
