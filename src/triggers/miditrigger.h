#pragma once

#include "triggers/midiinput.h"
#include "triggers/triggersource.h"

#include <QTimer>

/// A MIDI note or controller as trigger. Every matching message gives a signal, repeats included. start() takes
/// channel and number from the settings, for the thread on which the messages come in.
///
/// A device that is gone is noticed within 2 seconds, where the system stops listing it; the end of a JACK server is
/// not noticed. start() then waits for that very device: the number in the settings may be another one's by now.
class MidiTrigger : public TriggerSource {
    Q_OBJECT
public:
    /// Names of the MIDI inputs, for choosing one.
    static QStringList devices() { return MidiInput::deviceNames(); }

    explicit MidiTrigger(QObject* parent = nullptr);
    ~MidiTrigger() override;

    bool start() override;
    void stop() override;
    bool isActive() const override { return m_input.isOpen(); }
    QString description() const override;

private:
    void checkForRemoval();

    MidiInput m_input;
    QString m_name; ///< of the device that was opened, as the system lists it
    bool m_lost = false; ///< it was removed while it was open
    QTimer m_check;
};
