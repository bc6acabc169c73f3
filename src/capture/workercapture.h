#pragma once

#include "capture/audiocapture.h"

#include <QByteArray>
#include <QString>

class DeviceWorker;

/// Records a device that is read on a worker's thread, one worker per run. All that the worker reports comes to the
/// owner's thread by queued signals. Input gain and limiter are those that the settings held when the run started. A
/// failure comes from the worker, after start() has returned.
class WorkerCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId as the settings name the device, empty for the default device.
    explicit WorkerCapture(const QByteArray& deviceId, QObject* parent = nullptr);
    ~WorkerCapture() override;

    bool start(const PcmFormat& format) override;
    /// Within 3 seconds and a little, even when the worker hangs; runningChanged(false) follows from the event loop.
    void stop() override;
    bool isRunning() const override;

protected:
    /// A worker that was not started yet; the caller owns it.
    virtual DeviceWorker* createWorker(const QByteArray& deviceId, const PcmFormat& format, double gain,
                                       bool limiter) = 0;
    DeviceWorker* worker() const { return m_worker; }
    /// Display name of the device that is recorded, as the worker tells it; empty until that is known.
    const QString& friendlyName() const { return m_friendlyName; }
    void setFriendlyName(const QString& name) { m_friendlyName = name; }

private:
    QByteArray m_deviceId;
    QString m_friendlyName;
    DeviceWorker* m_worker = nullptr; ///< null while stopped; after a failure it has finished
};
