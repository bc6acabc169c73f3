#pragma once

#include "capture/deviceworker.h"

#include <memory>

class PulseConnection;
class PulseStream;

/// Records channels of one input device of the sound server, with the texts of QtAudioCapture. It never changes
/// to another device: when its own goes, that is a failure.
class PulseInputWorker : public DeviceWorker {
    Q_OBJECT
public:
    /// \param deviceId name of the source; not empty.
    PulseInputWorker(const QByteArray& deviceId, const ChannelPick& pick, const PcmFormat& format, double gain,
                     bool limiter);

protected:
    void run() override;

private:
    /// \return why it ended; empty when it was asked to.
    QString record(PulseConnection& server);
    QString open(PulseConnection& server);

    ChannelPick m_pick;
    std::unique_ptr<PulseStream> m_stream; ///< worker's thread only
};
