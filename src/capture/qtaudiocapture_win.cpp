#include "capture/qtaudiocapture.h"

#include "capture/audiosourcecapture_win.h"

AudioCapture* QtAudioCapture::createReader(const QByteArray& deviceId, QObject* parent)
{
    return new AudioSourceCapture(deviceId, parent);
}
