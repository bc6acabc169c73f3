#include "capture/capturefactory.h"

#include "app/appsettings.h"
#include "capture/qtaudiocapture.h"

#include <QMediaDevices>

AudioCapture* createCapture(QObject* parent)
{
    // So far every backend records the input device: loopback and streams are still to come.
    return new QtAudioCapture(AppSettings::instance().deviceId, parent);
}

QList<QAudioDevice> inputDevices()
{
    return QMediaDevices::audioInputs();
}
