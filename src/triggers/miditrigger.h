#pragma once

#include "triggers/midiinput.h"
#include "triggers/triggersource.h"

/// A MIDI note or controller as trigger. Every matching message gives a signal, repeats included. start() takes
/// channel and number from the settings, for the thread on which the messages come in.
class MidiTrigger : public TriggerSource {
    Q_OBJECT
public:
    /// Names of the MIDI inputs, for choosing one.
    static QStringList devices() { return MidiInput::deviceNames(); }

    using TriggerSource::TriggerSource;
    ~MidiTrigger() override;

    bool start() override;
    void stop() override;
    bool isActive() const override { return m_input.isOpen(); }
    QString description() const override;

private:
    MidiInput m_input;
};
