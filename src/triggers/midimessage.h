#pragma once

#include <QtGlobal>

#include <optional>

/// Which MIDI messages switch the trigger.
struct MidiFilter {
    int channel = 0; ///< 1-16; 0: any
    int number = 60; ///< note or controller
};

/// Whether a packed short message (MidiInput::Handler) switches the trigger on or off; nothing when it is any other.
/// Notes switch on with a velocity, off without one; controllers switch on from the value 64.
std::optional<bool> midiTriggerState(quint32 message, const MidiFilter& filter);
