#include "capture/capturefactory.h"

#include "app/appsettings.h"
#include "capture/qtaudiocapture.h"
#include "capture/streamcapture.h"

#include <QMediaDevices>

AudioCapture* createCapture(QObject* parent)
{
    const AppSettings& settings = AppSettings::instance();
    if (CaptureBackend(settings.backend) == CaptureBackend::Stream)
        return new StreamCapture(parent);
    // Loopback is still to come.
    return new QtAudioCapture(settings.deviceId, parent);
}

QList<QAudioDevice> inputDevices()
{
    return QMediaDevices::audioInputs();
}
