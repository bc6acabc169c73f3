#include "settings/appsettings.h"
#include "support/table.h"
#include "triggers/serialhangup.h"
#include "triggers/serialtrigger.h"

#include <QSerialPort>
#include <QSignalSpy>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// A pseudo-terminal has no modem lines: these stand for them.
int inputLines = 0;
int outputLines = 0;
bool unplugged = false;
bool withoutLines = false;

} // namespace

/// Takes the place of the C library's function for the whole program, QSerialPort included.
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list list;
    va_start(list, request);
    auto* argument = va_arg(list, int*);
    va_end(list);
    if (request != TIOCMGET && request != TIOCMSET && request != TIOCMBIS && request != TIOCMBIC)
        return int(syscall(SYS_ioctl, fd, request, argument));
    if (unplugged || withoutLines) {
        errno = unplugged ? EIO : ENOTTY;
        return -1;
    }
    if (request == TIOCMGET)
        *argument = inputLines | outputLines;
    else if (request == TIOCMSET)
        outputLines = *argument;
    else if (request == TIOCMBIS)
        outputLines |= *argument;
    else
        outputLines &= ~*argument;
    return 0;
}

/// Real QSerialPort calls on a real pseudo-terminal.
class TestSerialTrigger : public QObject {
    Q_OBJECT

    using WatchesALineRows = Table<int, int, bool, QString>;
    using PeerGoneRows = Table<int>;

private Q_SLOTS:
    void init()
    {
        m_peer = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(m_peer >= 0 && grantpt(m_peer) == 0 && unlockpt(m_peer) == 0);
        m_settings.serialPort = QString::fromLatin1(ptsname(m_peer));
        m_settings.serialLine = 0;
        m_settings.serialInvert = false;
        inputLines = 0;
        outputLines = 0;
        unplugged = false;
        withoutLines = false;
    }

    void cleanup() { close(m_peer); }
    void watchesALine_data()
    {
        const WatchesALineRows row;
        row("clear to send", 0, TIOCM_CTS, false, "CTS");
        row("data set ready", 1, TIOCM_DSR, false, "DSR");
        row("carrier detect", 2, TIOCM_CD, false, "DCD");
        row("an unknown line is the last", 9, TIOCM_CD, false, "DCD");
        row("clear to send, inverted", 0, TIOCM_CTS, true, "CTS, inverted");
    }
    void watchesALine()
    {
        const auto [line, bit, invert, name] = WatchesALineRows::fetch();
        m_settings.serialLine = line;
        m_settings.serialInvert = invert;
        SerialTrigger trigger(SerialTrigger::Mode::ControlLine);
        QSignalSpy on(&trigger, &TriggerSource::triggeredOn);
        QSignalSpy off(&trigger, &TriggerSource::triggeredOff);
        QSignalSpy lines(&trigger, &TriggerSource::logMessage);
        QVERIFY(trigger.start());
        QCOMPARE(lines[0][0].toString(),
                 QStringLiteral("Trigger listening on %1 (%2)").arg(m_settings.serialPort, name));
        QCOMPARE(outputLines & (TIOCM_DTR | TIOCM_RTS), TIOCM_DTR | TIOCM_RTS);

        QSignalSpy& high = invert ? off : on;
        QSignalSpy& low = invert ? on : off;
        QTRY_COMPARE(low.size(), 1); // the first look always reports
        inputLines = TIOCM_CTS | TIOCM_DSR | TIOCM_CD | TIOCM_RI;
        inputLines &= ~bit;
        QTest::qWait(100);
        inputLines = bit;
        QTRY_COMPARE(high.size(), 1);
        inputLines = 0;
        QTRY_COMPARE(low.size(), 2);
        QCOMPARE(high.size(), 1);
        trigger.stop();
        QVERIFY(!trigger.isActive());
    }

    void readsCommands()
    {
        m_settings.serialBaud = 19200;
        SerialTrigger trigger(SerialTrigger::Mode::TextCommands);
        QCOMPARE(trigger.description(), m_settings.serialPort + " (19200 baud, text)");
        QSignalSpy on(&trigger, &TriggerSource::triggeredOn);
        QSignalSpy off(&trigger, &TriggerSource::triggeredOff);
        QVERIFY(trigger.start());
        QVERIFY(write(m_peer, "rec on\r\nREC", 11) == 11);
        QTRY_COMPARE(on.size(), 1);
        QVERIFY(write(m_peer, " OFF\n", 5) == 5);
        QTRY_COMPARE(off.size(), 1);
        QCOMPARE(on.size(), 1);
    }

    /// It is said once, and a line that cannot be read is not a line that is low.
    void linesThatCannotBeRead()
    {
        inputLines = TIOCM_CTS;
        SerialTrigger trigger(SerialTrigger::Mode::ControlLine);
        QSignalSpy on(&trigger, &TriggerSource::triggeredOn);
        QSignalSpy off(&trigger, &TriggerSource::triggeredOff);
        QSignalSpy errors(&trigger, &TriggerSource::errorOccurred);
        QVERIFY(trigger.start());
        QTRY_COMPARE(on.size(), 1);
        withoutLines = true;
        QTRY_COMPARE(errors.size(), 1);
        QTest::qWait(200);
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors[0][0].toString().startsWith("The lines of pts/"));
        QVERIFY(trigger.isActive());
        withoutLines = false;
        QTRY_COMPARE(on.size(), 2); // once more, as the last is long ago
        QCOMPARE(off.size(), 0);
    }

    void peerGone_data()
    {
        const PeerGoneRows row;
        row("control line", 1);
        row("text", 2);
    }
    void peerGone()
    {
        const auto [mode] = PeerGoneRows::fetch();
        SerialTrigger trigger{SerialTrigger::Mode(mode)};
        QSignalSpy errors(&trigger, &TriggerSource::errorOccurred);
        QVERIFY(trigger.start());
        unplugged = true;
        close(m_peer);
        QTRY_VERIFY(!trigger.isActive());
        // Once it is known, nothing is left that turns in circles.
        const std::clock_t before = std::clock();
        QTest::qWait(500);
        QVERIFY(std::clock() - before < CLOCKS_PER_SEC / 10);
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors[0][0].toString().startsWith("The serial port pts/"));
    }

    /// What the trigger asks where Qt does not tell.
    void hangup()
    {
        QSerialPort port(m_settings.serialPort);
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(!isHungUp(port));
        close(m_peer);
        QVERIFY(isHungUp(port));
    }

    void refusesToStart()
    {
        SerialTrigger trigger(SerialTrigger::Mode::TextCommands);
        QSignalSpy errors(&trigger, &TriggerSource::errorOccurred);
        m_settings.serialPort = "/dev/no-such-port";
        QVERIFY(!trigger.start());
        m_settings.serialPort.clear();
        QVERIFY(!trigger.start());
        QVERIFY(errors[0][0].toString().startsWith("Cannot open /dev/no-such-port: "));
        QCOMPARE(errors[1][0].toString(), "No serial port has been selected for triggering.");
        QVERIFY(!trigger.isActive());
    }

private:
    AppSettings& m_settings = AppSettings::instance();
    int m_peer = -1; ///< the other end of the cable
};

QTEST_GUILESS_MAIN(TestSerialTrigger)
#include "tst_serialtrigger_linux.moc"
