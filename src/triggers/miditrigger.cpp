#include "triggers/miditrigger.h"

#include "settings/appsettings.h"
#include "triggers/midimessage.h"

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto CheckInterval = 2s;

} // namespace

MidiTrigger::MidiTrigger(QObject* parent) : TriggerSource(parent)
{
    connect(&m_check, &QTimer::timeout, this, &MidiTrigger::checkForRemoval);
}

MidiTrigger::~MidiTrigger()
{
    MidiTrigger::stop();
}

bool MidiTrigger::start()
{
    stop();
    const AppSettings& settings = AppSettings::instance();
    const QStringList names = devices();
    if (names.isEmpty()) {
        Q_EMIT errorOccurred(tr("No MIDI input devices were found."));
        return false;
    }
    const int index = m_lost ? midiDeviceIndex(names, m_name) : qBound(0, settings.midiDevice, int(names.size()) - 1);
    if (index < 0) {
        Q_EMIT errorOccurred(tr("The MIDI input %1 was removed.").arg(m_name));
        return false;
    }
    // The handler runs on a thread of the system's: it gets what it needs of the settings now, and only posts.
    const MidiFilter filter{settings.midiChannel, settings.midiNumber};
    const int error = m_input.open(index, [this, filter](quint32 message) {
        if (const auto on = midiTriggerState(message, filter))
            QMetaObject::invokeMethod(this, *on ? &MidiTrigger::triggeredOn : &MidiTrigger::triggeredOff,
                                      Qt::QueuedConnection);
    });
    if (error != 0) {
        Q_EMIT errorOccurred(tr("Could not open the MIDI input (error %1).").arg(error));
        return false;
    }
    m_name = names.at(index);
    m_lost = false;
    m_check.start(CheckInterval);
    Q_EMIT logMessage(tr("Trigger listening on %1").arg(description()));
    return true;
}

void MidiTrigger::stop()
{
    m_check.stop();
    m_input.close();
}

void MidiTrigger::checkForRemoval()
{
    if (m_input.namesNow().contains(m_name))
        return;
    stop();
    m_lost = true;
    Q_EMIT errorOccurred(tr("The MIDI input %1 was removed.").arg(m_name));
}

QString MidiTrigger::description() const
{
    const AppSettings& settings = AppSettings::instance();
    const QString channel = settings.midiChannel != 0 ? tr("channel %1").arg(settings.midiChannel) : tr("any channel");
    return tr("MIDI %1, number %2, %3")
        .arg(settings.midiDeviceName.isEmpty() ? tr("input") : settings.midiDeviceName,
             QString::number(settings.midiNumber), channel);
}
