#include "capture/capturefactory.h"

#include "capture/loopback.h"
#include "capture/qtaudiocapture.h"
#include "capture/streamcapture.h"
#include "settings/appsettings.h"

#include <QMediaDevices>

AudioCapture* createCapture(QObject* parent)
{
    const AppSettings& settings = AppSettings::instance();
    const auto backend = CaptureBackend(settings.backend);
    if (backend == CaptureBackend::Loopback)
        return createLoopbackCapture(settings.playbackId, parent);
    if (backend == CaptureBackend::Stream)
        return new StreamCapture(parent);
    return new QtAudioCapture(settings.deviceId, parent);
}

QList<QAudioDevice> inputDevices()
{
    return QMediaDevices::audioInputs();
}
