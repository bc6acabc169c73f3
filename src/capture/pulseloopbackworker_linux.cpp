#include "capture/pulseloopbackworker_linux.h"

#include "capture/pulseconnection_linux.h"

#include <QScopeGuard>

using namespace std::chrono_literals;

namespace {

/// How long a stop or an audible gap may go unnoticed; sound wakes the loop by itself.
constexpr auto PollInterval = 50ms;
/// A monitor that runs delivers, if late: what a busy server owes comes in full, and silence in its place would cut the
/// sound in two.
constexpr auto RunningMonitorPatience = 2000ms;
/// A server that does not answer for so long is busy or frozen, and silence in place of its audio would be invented.
constexpr auto AnswerTimeout = 500ms;
/// It is frozen, not busy: the silence of this time is not made up either.
constexpr auto FrozenAfter = 3000ms;
/// A device that goes away takes its stream along, and the next attempt finds the list without it.
constexpr int FailuresAtMost = 5;

} // namespace

void PulseLoopbackWorker::run()
{
    QString refusal;
    const auto server = PulseConnection::ready([this] { return stopRequested(); }, refusal);
    const auto beforeItsServer = qScopeGuard([this] { m_stream.reset(); });
    const QString error = server              ? record(*server)
                          : refusal.isEmpty() ? QString()
                                              : tr("Could not connect to the sound server (%1).").arg(refusal);
    if (!error.isEmpty())
        Q_EMIT failed(error);
}

QString PulseLoopbackWorker::record(PulseConnection& server)
{
    do {
        if (m_stream && m_stream->hasEnded()) {
            m_stream.reset();
            server.refresh();
            if (++m_failures > FailuresAtMost)
                return startFailedText();
        }
        if (m_seenRevision != server.revision() && !follow(server))
            return noDeviceText();
        if (m_stream)
            drain();
        fillGaps(server.ping());
        if (!server.iterate(PollInterval))
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

    m_monitorIndex = sink->monitorIndex;
    m_stream = PulseStream::record(server.context(), "Loopback", sink->monitorName, sink->format, sink->channels);
    if (!m_stream)
        return false;
    setMixFormat(m_stream->format());
    Q_EMIT endpointResolved(sink->description);
    return true;
}

/// \param unanswered for how long the server has not answered.
void PulseLoopbackWorker::fillGaps(std::chrono::milliseconds unanswered)
{
    const bool isPlaying = m_stream && m_stream->isPlaying();
    if (unanswered < AnswerTimeout)
        keepTime(isPlaying ? RunningMonitorPatience : Loopback::SilenceAfter);
    else if (isPlaying || unanswered >= FrozenAfter)
        skipTime();
}

void PulseLoopbackWorker::drain()
{
    m_stream->drain([this](const uchar* samples, qint64 frames) {
        m_failures = 0;
        deliver(samples, frames);
    });
}
