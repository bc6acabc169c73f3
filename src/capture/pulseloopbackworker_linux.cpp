#include "capture/pulseloopbackworker_linux.h"

#include "capture/pulseconnection_linux.h"

#include <QDeadlineTimer>
#include <QScopeGuard>

using namespace std::chrono_literals;

namespace {

/// How long a stop or an audible gap may go unnoticed; sound wakes the loop by itself.
constexpr auto PollInterval = 50ms;
constexpr auto ConnectTimeout = 5s;
constexpr pa_usec_t FragmentMicroseconds = 50'000;
/// A monitor that runs delivers, if late: what a busy server owes comes in full, and silence in its place would cut the
/// sound in two. Only a frozen server stays away for so long.
constexpr auto RunningMonitorPatience = 2000ms;
/// A device that goes away takes its stream along, and the next attempt finds the list without it.
constexpr int FailuresAtMost = 5;

bool hasEnded(pa_stream* stream)
{
    return !PA_STREAM_IS_GOOD(pa_stream_get_state(stream));
}

bool isPlaying(pa_stream* stream)
{
    return pa_stream_get_state(stream) == PA_STREAM_READY && pa_stream_is_suspended(stream) == 0;
}

} // namespace

void PulseLoopbackWorker::Release::operator()(pa_stream* stream) const
{
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

MixFormat PulseLoopbackWorker::formatFor(pa_sample_spec& monitor)
{
    int bits = 0;
    switch (monitor.format) {
    case PA_SAMPLE_U8:
        bits = 8;
        break;
    case PA_SAMPLE_S16LE:
        bits = 16;
        break;
    case PA_SAMPLE_S24LE:
        bits = 24;
        break;
    case PA_SAMPLE_S32LE:
        bits = 32;
        break;
    default:
        monitor.format = PA_SAMPLE_FLOAT32LE;
        bits = 32;
    }
    return {int(monitor.rate), monitor.channels, bits, monitor.format == PA_SAMPLE_FLOAT32LE,
            int(pa_frame_size(&monitor))};
}

void PulseLoopbackWorker::run()
{
    PulseConnection server;
    const auto beforeItsServer = qScopeGuard([this] { m_stream.reset(); });
    const QString error = record(server);
    if (!error.isEmpty())
        Q_EMIT failed(error);
}

QString PulseLoopbackWorker::record(PulseConnection& server)
{
    const QDeadlineTimer timeout(ConnectTimeout);
    while (server.revision() == 0) {
        if (stopRequested())
            return {};
        if (!server.turn(PollInterval) || timeout.hasExpired())
            return tr("Could not connect to the sound server (%1).").arg(server.errorString());
    }
    do {
        if (m_stream && hasEnded(m_stream.get())) {
            m_stream.reset();
            server.refresh();
            if (++m_failures > FailuresAtMost)
                return startFailedText();
        }
        if (m_seenRevision != server.revision() && !follow(server))
            return noDeviceText();
        if (m_stream)
            drain();
        keepTime(m_stream && isPlaying(m_stream.get()) ? RunningMonitorPatience : Loopback::SilenceAfter);
        if (!server.turn(PollInterval))
            return tr("The connection to the sound server was lost (%1).").arg(server.errorString());
    } while (!stopRequested());
    return {};
}

/// Records the device that the list now calls for. \return false when there is none.
bool PulseLoopbackWorker::follow(PulseConnection& server)
{
    m_seenRevision = server.revision();
    const PulseSink* const sink = server.sinkFor(deviceId());
    if (!sink)
        return false;
    if (m_stream && sink->monitorIndex == m_monitorIndex)
        return true;

    pa_sample_spec format = sink->format;
    setMixFormat(formatFor(format));
    m_monitorIndex = sink->monitorIndex;
    m_stream.reset(pa_stream_new(server.context(), "Loopback", &format, &sink->channels));
    if (!m_stream)
        return false;
    pa_buffer_attr buffer;
    buffer.maxlength = buffer.tlength = buffer.prebuf = buffer.minreq = uint32_t(-1);
    buffer.fragsize = uint32_t(pa_usec_to_bytes(FragmentMicroseconds, &format));
    // Moved to another device by the server, the stream would record what nobody chose, and in silence.
    constexpr auto Flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
    pa_stream_connect_record(m_stream.get(), sink->monitorName.constData(), &buffer, Flags);
    Q_EMIT endpointResolved(sink->description);
    return true;
}

void PulseLoopbackWorker::drain()
{
    const qint64 frameBytes = qint64(pa_frame_size(pa_stream_get_sample_spec(m_stream.get())));
    const void* samples = nullptr; // none: the server has dropped some, and says how many
    size_t bytes = 0;
    while (pa_stream_peek(m_stream.get(), &samples, &bytes) == 0 && bytes > 0) {
        m_failures = 0;
        deliver(static_cast<const uchar*>(samples), qint64(bytes) / frameBytes);
        pa_stream_drop(m_stream.get());
    }
}
