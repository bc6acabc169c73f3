#include "capture/loopbackcapture.h"

QString LoopbackCapture::description() const
{
    return friendlyName().isEmpty() ? tr("(default playback device)") : friendlyName();
}
