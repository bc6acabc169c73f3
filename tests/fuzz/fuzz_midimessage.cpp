#include "triggers/midimessage.h"

#include <cstdlib>
#include <cstring>

/// A packed message and a filter.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    quint32 message;
    MidiFilter filter;
    if (size < sizeof message + sizeof filter)
        return 0;
    std::memcpy(&message, data, sizeof message);
    std::memcpy(&filter, data + sizeof message, sizeof filter);
    // What lies above the three bytes of a message says nothing.
    if (midiTriggerState(message, filter) != midiTriggerState(message & 0xffffff, filter))
        std::abort();
    return 0;
}
