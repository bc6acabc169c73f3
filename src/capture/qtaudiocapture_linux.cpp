#include "capture/qtaudiocapture.h"

#include "capture/pulseinputcapture_linux.h"

AudioCapture* QtAudioCapture::createReader(const QByteArray& deviceId, QObject* parent)
{
    return new PulseInputCapture(deviceId, parent);
}
