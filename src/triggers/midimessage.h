#pragma once

#include <QStringList>

#include <optional>

/// Which MIDI messages switch the trigger.
struct MidiFilter {
    int channel = 0; ///< 1-16; 0: any
    int number = 60; ///< note or controller
};

/// Whether a packed short message (MidiInput::Handler) switches the trigger on or off; nothing when it is any other.
/// Notes switch on with a velocity, off without one; controllers switch on from the value 64.
std::optional<bool> midiTriggerState(quint32 message, const MidiFilter& filter);

/// Index of the device of this name; -1: it is not there. The numbers that ALSA appends ("Keys:Keys MIDI 1 20:0") may
/// be others after it was plugged in again, so they count only where several devices have the name.
int midiDeviceIndex(const QStringList& names, const QString& name);
