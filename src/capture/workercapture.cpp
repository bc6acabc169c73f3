#include "capture/workercapture.h"

#include "capture/deviceworker.h"
#include "capture/pcmconvert.h"
#include "settings/appsettings.h"

#include <QLoggingCategory>

#include <utility>

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(lcWorker, "tidewell.capture.worker")

namespace {

constexpr auto StopTimeout = 3s;
/// A cancelled thread ends where it next waits for the system.
constexpr auto TerminateTimeout = 200ms;

} // namespace

WorkerCapture::WorkerCapture(const QByteArray& deviceId, QObject* parent) : AudioCapture(parent), m_deviceId(deviceId)
{
}

WorkerCapture::~WorkerCapture()
{
    stop();
}

bool WorkerCapture::isRunning() const
{
    return m_worker && m_worker->isRunning();
}

bool WorkerCapture::start(const PcmFormat& format)
{
    stop();
    const AppSettings& settings = AppSettings::instance();
    DeviceWorker* const worker =
        createWorker(m_deviceId, format, GainStage::factorFromDb(settings.inputGainDb), settings.softLimit);
    m_worker = worker;
    // What a worker has queued is delivered even after it was disconnected, and must not get into the next run. The
    // worker is deleted behind all it has queued, so that no later one can be mistaken for it.
    connect(worker, &DeviceWorker::pcmReady, this, [this, worker](const QByteArray& pcmS16) {
        if (m_worker == worker)
            Q_EMIT dataReady(pcmS16);
    });
    connect(worker, &DeviceWorker::failed, this, [this, worker](const QString& message) {
        if (m_worker == worker)
            Q_EMIT errorOccurred(message);
    });
    connect(worker, &DeviceWorker::endpointResolved, this, [this, worker](const QString& friendlyName) {
        if (m_worker == worker)
            m_friendlyName = friendlyName;
    });
    connect(worker, &DeviceWorker::warning, this, [this, worker](const QString& message) {
        if (m_worker == worker)
            Q_EMIT warning(message);
    });
    connect(worker, &DeviceWorker::overload, this, [this, worker] {
        if (m_worker == worker)
            Q_EMIT overloadDetected();
    });
    connect(worker, &QThread::finished, this, [this, worker] {
        if (!m_worker || m_worker == worker) // not when it was replaced
            Q_EMIT runningChanged(false);
    });
    worker->start(QThread::TimeCriticalPriority);
    Q_EMIT runningChanged(true);
    return true;
}

void WorkerCapture::stop()
{
    DeviceWorker* const worker = std::exchange(m_worker, nullptr);
    if (!worker)
        return;
    worker->requestStop();
    if (!worker->wait(QDeadlineTimer(StopTimeout))) {
        qCWarning(lcWorker, "the device does not answer, its thread is terminated");
        worker->terminate();
        worker->wait(QDeadlineTimer(TerminateTimeout));
    }
    // To delete a running thread would end the program: one that cannot even be terminated is left alone.
    if (worker->isFinished())
        worker->deleteLater();
    else
        connect(worker, &QThread::finished, worker, &QObject::deleteLater);
}
