#include "capture/channelreader.h"

AudioCapture* createChannelReader(const QAudioDevice&, const ChannelPick&, QObject*)
{
    return nullptr;
}
