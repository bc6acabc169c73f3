#include "triggers/midimessage.h"

std::optional<bool> midiTriggerState(quint32 message, const MidiFilter& filter)
{
    const int status = int(message & 0xff);
    const int number = int(message >> 8 & 0xff);
    const int value = int(message >> 16 & 0xff);
    if (filter.channel != 0 && filter.channel != (status & 0x0f) + 1)
        return {};
    if (number != filter.number)
        return {};
    switch (status & 0xf0) {
    case 0x90: // note on
        return value != 0;
    case 0xb0: // control change
        return value >= 64;
    case 0x80: // note off
        return false;
    default:
        return {};
    }
}
