#include "triggers/serialtrigger.h"

#include "settings/appsettings.h"
#include "triggers/serialhangup.h"

#include <QSerialPort>
#include <QSerialPortInfo>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto PollInterval = 20ms;
constexpr auto HangupCheckInterval = 1s;

struct ControlLine {
    const char* name;
    QSerialPort::PinoutSignal signal;
};
/// By the number that the settings store; any other number is the last one.
constexpr ControlLine ControlLines[] = {
    {"CTS", QSerialPort::ClearToSendSignal},
    {"DSR", QSerialPort::DataSetReadySignal},
    {"DCD", QSerialPort::DataCarrierDetectSignal},
};

const ControlLine& watchedLine()
{
    const int line = AppSettings::instance().serialLine;
    return ControlLines[line == 0 || line == 1 ? line : 2];
}

} // namespace

bool SerialTrigger::isSupported()
{
    return true;
}

QList<SerialTrigger::Port> SerialTrigger::ports()
{
    QList<Port> list;
    const auto infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : infos) {
        const QString name = info.portName();
        list.append({name, info.description().isEmpty() ? name : name + QStringLiteral(" - ") + info.description()});
    }
    return list;
}

SerialTrigger::SerialTrigger(Mode mode, QObject* parent) : TriggerSource(parent), m_mode(mode)
{
    // A coarse timer fires every 31 ms on Windows, and a short contact would be missed.
    m_poll.setTimerType(Qt::PreciseTimer);
    const bool watchesLine = mode == Mode::ControlLine;
    m_poll.setInterval(watchesLine ? PollInterval : HangupCheckInterval);
    connect(&m_poll, &QTimer::timeout, this,
            watchesLine ? &SerialTrigger::pollControlLines : &SerialTrigger::checkForHangup);
}

SerialTrigger::~SerialTrigger()
{
    SerialTrigger::stop();
}

bool SerialTrigger::start()
{
    stop();
    const AppSettings& settings = AppSettings::instance();
    if (settings.serialPort.isEmpty()) {
        Q_EMIT errorOccurred(tr("No serial port has been selected for triggering."));
        return false;
    }
    m_port = new QSerialPort(settings.serialPort, this);
    m_port->setBaudRate(settings.serialBaud);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setParity(QSerialPort::NoParity);
    m_port->setStopBits(QSerialPort::OneStop);
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    // While lines are watched nobody reads what comes in.
    m_port->setReadBufferSize(SerialLines::MaxPending);
    if (!m_port->open(QIODevice::ReadWrite)) {
        Q_EMIT errorOccurred(tr("Cannot open %1: %2").arg(settings.serialPort, m_port->errorString()));
        delete m_port;
        m_port = nullptr;
        return false;
    }
    connect(m_port, &QSerialPort::errorOccurred, this, &SerialTrigger::onPortError);
    if (m_mode == Mode::ControlLine) {
        // They can feed the contact that closes onto the watched input.
        m_port->setDataTerminalReady(true);
        m_port->setRequestToSend(true);
    } else {
        connect(m_port, &QSerialPort::readyRead, this, &SerialTrigger::readCommands);
    }
    if (!isActive()) // raising the lines found that the port is gone
        return false;
    m_poll.start();
    Q_EMIT logMessage(tr("Trigger listening on %1").arg(description()));
    return true;
}

void SerialTrigger::stop()
{
    m_poll.stop();
    if (m_port) {
        m_port->disconnect(this);
        m_port->close();
        m_port->deleteLater();
        m_port = nullptr;
    }
    m_lines.clear();
    m_lineState.reset();
    m_linesUnreadable = false;
}

bool SerialTrigger::isActive() const
{
    return m_port && m_port->isOpen();
}

QString SerialTrigger::description() const
{
    const AppSettings& settings = AppSettings::instance();
    if (m_mode == Mode::TextCommands)
        return tr("%1 (%2 baud, text)").arg(settings.serialPort, QString::number(settings.serialBaud));
    return tr("%1 (%2%3)")
        .arg(settings.serialPort, QLatin1String(watchedLine().name),
             settings.serialInvert ? tr(", inverted") : QString());
}

void SerialTrigger::onPortError()
{
    const QSerialPort::SerialPortError error = m_port->error();
    if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError && error != QSerialPort::PermissionError)
        return;
    lose(m_port->errorString());
}

void SerialTrigger::checkForHangup()
{
    if (isHungUp(*m_port))
        lose(tr("the device is gone"));
}

/// Closes it, because a port whose other end is gone reports the same error, or nothing to read, again without end, a
/// hundred thousand times per second.
void SerialTrigger::lose(const QString& reason)
{
    m_poll.stop();
    m_port->close();
    Q_EMIT errorOccurred(tr("The serial port %1 was lost: %2").arg(m_port->portName(), reason));
}

void SerialTrigger::pollControlLines()
{
    if (!isActive())
        return;
    m_port->clearError();
    const bool line = m_port->pinoutSignals().testFlag(watchedLine().signal);
    if (!isActive())
        return;
    if (m_port->error() != QSerialPort::NoError) { // what could not be read is not a line that is low
        complainOfLines();
        return;
    }
    if (std::exchange(m_linesUnreadable, false))
        Q_EMIT logMessage(tr("The lines of %1 can be read again").arg(m_port->portName()));
    const bool on = line != AppSettings::instance().serialInvert;
    if (m_lineState == on)
        return;
    m_lineState = on;
    if (on)
        Q_EMIT triggeredOn();
    else
        Q_EMIT triggeredOff();
}

/// Once, as it is tried again 50 times per second.
void SerialTrigger::complainOfLines()
{
    m_lineState.reset(); // so that the first look that works reports it
    if (!std::exchange(m_linesUnreadable, true))
        Q_EMIT errorOccurred(tr("The lines of %1 cannot be read: %2").arg(m_port->portName(), m_port->errorString()));
}

void SerialTrigger::readCommands()
{
    m_lines.append(m_port->readAll());
    const AppSettings& settings = AppSettings::instance();
    while (const auto line = m_lines.next()) {
        switch (serialCommand(*line, settings.onCommand, settings.offCommand)) {
        case SerialCommand::On:
            Q_EMIT triggeredOn();
            break;
        case SerialCommand::Off:
            Q_EMIT triggeredOff();
            break;
        case SerialCommand::None:
            break;
        }
    }
}
