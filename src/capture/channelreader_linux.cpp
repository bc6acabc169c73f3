#include "capture/channelreader.h"

#include "capture/pulseinputcapture_linux.h"

#include <QAudioDevice>

AudioCapture* createChannelReader(const QAudioDevice& device, const ChannelPick& pick, QObject* parent)
{
    return new PulseInputCapture(device, pick, parent);
}
