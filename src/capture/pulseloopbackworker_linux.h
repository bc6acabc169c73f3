#pragma once

#include "capture/loopbackworker.h"
#include "capture/pulsestream_linux.h"

#include <chrono>
#include <memory>

class PulseConnection;

/// Records the monitor of the chosen playback device, in the device's own format. While that device is not there it
/// records the default one, whichever that is at the time. While the server does not answer it delivers nothing.
class PulseLoopbackWorker : public LoopbackWorker {
    Q_OBJECT
public:
    using LoopbackWorker::LoopbackWorker;

protected:
    void run() override;

private:
    /// \return why it ended; empty when it was asked to.
    QString record(PulseConnection& server);
    bool follow(PulseConnection& server);
    void fillGaps(std::chrono::milliseconds unanswered);
    void drain();

    std::unique_ptr<PulseStream> m_stream; ///< worker's thread only
    int m_seenRevision = 0;
    quint32 m_monitorIndex = 0; ///< what m_stream records
    int m_failures = 0; ///< since a stream last delivered
};
