#pragma once

#include "capture/deviceworker.h"
#include "capture/pulseconnection_linux.h"
#include "capture/pulsestream_linux.h"

#include <QDeadlineTimer>
#include <QSemaphore>

#include <chrono>
#include <memory>
#include <optional>

/// Records one input device of the sound server, with the texts of QtAudioCapture. All of its channels are converted to
/// the wanted format by the server; picked ones are taken out of the device's own format here.
///
/// Where the chosen device is missing it records the default one, until the chosen one delivers. When the device that
/// it records goes, that is a failure.
class PulseInputWorker : public DeviceWorker {
    Q_OBJECT
public:
    /// How the start went.
    struct Opening {
        QString device; ///< display name; empty when there is none
        QString failure; ///< empty when it records
    };

    /// \param deviceId name of the source, empty for the server's default one.
    PulseInputWorker(const QByteArray& deviceId, const ChannelPick& pick, const PcmFormat& format, double gain,
                     bool limiter);

    /// Waits until the device is open or has failed; to be called once, by the thread that started the worker.
    /// \return nothing when neither was known in time.
    std::optional<Opening> waitUntilOpen(std::chrono::milliseconds atMost);

protected:
    void run() override;

private:
    struct Input {
        PulseSource source;
        std::unique_ptr<PulseStream> stream;
    };

    /// \return why it ended; empty when it was asked to.
    QString record(PulseConnection& server);
    QString read(PulseConnection& server);
    QString reasonOfEnd(PulseConnection& server);
    Input open(PulseConnection& server, const PulseSource& source) const;
    void lookForChosen(PulseConnection& server);
    void settle(const QString& failure);

    ChannelPick m_pick;
    Opening m_opening; ///< does not change any more once m_settled was released
    QSemaphore m_settled;
    // Used by the worker's thread only.
    Input m_recorded;
    Input m_chosen; ///< the device that was missing: opened, it has not delivered yet
    QDeadlineTimer m_nextLook; ///< when to look for it again
    bool m_hasDelivered = false;
    bool m_isSettled = false;
};
