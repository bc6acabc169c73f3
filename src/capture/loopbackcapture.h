#pragma once

#include "capture/audiocapture.h"

#include <QByteArray>
#include <QString>

class LoopbackWorker;

/// Records what a playback device plays. The device is read on a worker's thread, one worker a run, and all it reports
/// comes to the owner's thread by queued signals; this part is the same on every system. Input gain and limiter are
/// those that the settings held when the run started. What fails, fails in the worker, after start() has returned.
class LoopbackCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId PlaybackDevice::id, empty for the default device.
    explicit LoopbackCapture(const QByteArray& deviceId, QObject* parent = nullptr);
    ~LoopbackCapture() override;

    bool start(const PcmFormat& format) override;
    /// Within 3 seconds and a little, even when the worker hangs; runningChanged(false) follows from the event loop.
    void stop() override;
    bool isRunning() const override;
    /// The device that is recorded; until that is known, that it is the default one.
    QString description() const override;

protected:
    /// A worker that was not started yet; the caller owns it.
    virtual LoopbackWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                         bool limiter) = 0;

private:
    QByteArray m_deviceId;
    QString m_friendlyName;
    LoopbackWorker* m_worker = nullptr; ///< null while stopped; after a failure it has finished
};
