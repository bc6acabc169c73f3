// Stands in for serialtrigger.cpp where Qt has no serial port module.
#include "triggers/serialtrigger.h"

bool SerialTrigger::isSupported()
{
    return false;
}

QList<SerialTrigger::Port> SerialTrigger::ports()
{
    return {};
}

SerialTrigger::SerialTrigger(Mode mode, QObject* parent) : TriggerSource(parent), m_mode(mode) {}

SerialTrigger::~SerialTrigger() = default;

bool SerialTrigger::start()
{
    Q_EMIT errorOccurred(tr("This build was compiled without Qt SerialPort support."));
    return false;
}

void SerialTrigger::stop() {}

bool SerialTrigger::isActive() const
{
    return false;
}

QString SerialTrigger::description() const
{
    return {};
}

void SerialTrigger::pollControlLines() {}

void SerialTrigger::readCommands() {}
