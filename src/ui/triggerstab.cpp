#include "ui/triggerstab.h"

#include "settings/appsettings.h"
#include "settings/limits.h"
#include "triggers/miditrigger.h"
#include "triggers/serialtrigger.h"
#include "triggers/triggercontroller.h"
#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

void enableAll(const QList<QWidget*>& controls, bool enabled)
{
    for (QWidget* control : controls)
        control->setEnabled(enabled);
}

} // namespace

TriggersTab::TriggersTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent) : QWidget(parent)
{
    m_kind = new QComboBox;
    m_kind->addItem(tr("Off"), int(TriggerKind::None));
    m_kind->addItem(tr("Serial contact closure"), int(TriggerKind::SerialLine));
    m_kind->addItem(tr("Serial text command"), int(TriggerKind::SerialText));
    m_kind->addItem(tr("MIDI note or control change"), int(TriggerKind::Midi));
    binding.bind(m_kind, settings.triggerKind);
    if (!SerialTrigger::isSupported())
        m_kind->setToolTip(tr("This build was compiled without Qt SerialPort support."));
    connect(m_kind, &QComboBox::currentIndexChanged, this, &TriggersTab::updateTriggerOptions);

    auto* group = new QGroupBox(tr("External trigger"));
    auto* form = new QFormLayout(group);
    form->addRow(tr("Trigger:"), m_kind);
    addSerial(form, settings, binding);
    addMidi(form, settings, binding);

    auto* runOn = new QSpinBox;
    runOn->setRange(Limits::HoldSeconds.lowest, Limits::HoldSeconds.highest);
    runOn->setSuffix(tr(" sec"));
    binding.bind(runOn, settings.holdSeconds);
    m_runOn = runOn;
    auto* explanation = new QLabel(tr("Keep recording for this long after the trigger releases, so brief gaps between "
                                      "links do not chop the archive into fragments."));
    explanation->setWordWrap(true);
    form->addRow(tr("Run-on:"), runOn);
    form->addRow(explanation);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addStretch();
    updateTriggerOptions();
}

void TriggersTab::addSerial(QFormLayout* form, AppSettings& settings, SettingsBinding& binding)
{
    auto* port = new QComboBox;
    for (const SerialTrigger::Port& found : SerialTrigger::ports())
        port->addItem(found.label, found.name);
    if (port->count() == 0 && settings.serialPort.isEmpty())
        port->addItem(tr("(no serial ports found)"), QString());
    binding.bind(port, settings.serialPort, settings.serialPort.isEmpty() ? tr("(no port chosen)") : QString());
    auto* baud = new QComboBox;
    for (const int rate : Limits::BaudRates)
        baud->addItem(QString::number(rate), rate);
    binding.bind(baud, settings.serialBaud);
    auto* line = new QComboBox;
    line->addItem(tr("CTS"), 0);
    line->addItem(tr("DSR"), 1);
    line->addItem(tr("DCD"), 2);
    binding.bind(line, settings.serialLine);
    auto* invert = new QCheckBox(tr("Invert (record when open)"));
    binding.bind(invert, settings.serialInvert);
    auto* on = new QLineEdit;
    binding.bind(on, settings.onCommand);
    auto* off = new QLineEdit;
    binding.bind(off, settings.offCommand);

    form->addRow(tr("Serial port:"), port);
    form->addRow(tr("Baud:"), baud);
    form->addRow(tr("Sense line:"), line);
    form->addRow(invert);
    form->addRow(tr("Start command:"), on);
    form->addRow(tr("Stop command:"), off);
    m_serialControls = {port, baud};
    m_lineControls = {line, invert};
    m_commandControls = {on, off};
}

void TriggersTab::addMidi(QFormLayout* form, AppSettings& settings, SettingsBinding& binding)
{
    auto* input = new QComboBox;
    const QStringList names = MidiTrigger::devices();
    for (int index = 0; index < names.size(); ++index)
        input->addItem(names.at(index), index);
    const QString& stored = settings.midiDeviceName;
    binding.bind(input, settings.midiDevice, stored.isEmpty() ? tr("(no MIDI inputs found)") : stored);
    binding.onWrite([input, names, &settings] {
        // An input that is not connected keeps its name.
        if (settings.midiDevice >= 0 && settings.midiDevice < names.size())
            settings.midiDeviceName = names.value(input->currentIndex());
    });
    auto* channel = new QSpinBox;
    channel->setRange(Limits::MidiChannel.lowest, Limits::MidiChannel.highest);
    channel->setSpecialValueText(tr("any"));
    binding.bind(channel, settings.midiChannel);
    auto* number = new QSpinBox;
    number->setRange(Limits::MidiNumber.lowest, Limits::MidiNumber.highest);
    binding.bind(number, settings.midiNumber);

    form->addRow(tr("MIDI input:"), input);
    form->addRow(tr("Channel:"), channel);
    form->addRow(tr("Note / CC:"), number);
    m_midiControls = {input, channel, number};
}

void TriggersTab::updateTriggerOptions()
{
    const auto kind = TriggerKind(m_kind->currentData().toInt());
    const bool serial = kind == TriggerKind::SerialLine || kind == TriggerKind::SerialText;
    enableAll(m_serialControls, serial);
    enableAll(m_lineControls, kind == TriggerKind::SerialLine);
    enableAll(m_commandControls, kind == TriggerKind::SerialText);
    enableAll(m_midiControls, kind == TriggerKind::Midi);
    m_runOn->setEnabled(kind != TriggerKind::None);
}
