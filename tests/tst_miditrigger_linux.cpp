#include "settings/appsettings.h"
#include "triggers/miditrigger.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <RtMidi.h>

/// Real MIDI, through JACK on its dummy driver.
class TestMidiTrigger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // A server of our own name, which nobody else finds and which is never started for us.
        const QByteArray name = "tidewell-test-" + QByteArray::number(QCoreApplication::applicationPid());
        qputenv("JACK_DEFAULT_SERVER", name);
        qputenv("JACK_NO_START_SERVER", "1");
        qputenv("ALSA_CONFIG_PATH", "/dev/null"); // its sequencer, where there is one, would come first
        m_jack.setProcessChannelMode(QProcess::MergedChannels);
    }

    void init()
    {
        m_settings.midiDevice = 5; // there is one: taken is the last
        m_settings.midiDeviceName.clear();
        m_settings.midiChannel = 10;
        m_settings.midiNumber = 60;
    }

    void noDevices()
    {
        MidiTrigger trigger;
        QSignalSpy errors(&trigger, &TriggerSource::errorOccurred);
        QVERIFY(!trigger.start());
        QCOMPARE(errors, (QList<QVariantList>{{"No MIDI input devices were found."}}));
    }

    void followsNotesAndControllers()
    {
        m_jack.start("jackd", {"--no-realtime", "-n", qEnvironmentVariable("JACK_DEFAULT_SERVER"), "-d", "dummy"});
        QVERIFY(m_jack.waitForStarted());
        std::unique_ptr<RtMidiOut> keyboard;
        const auto connected = [&] {
            keyboard = std::make_unique<RtMidiOut>(RtMidi::UNIX_JACK, "keyboard");
            static bool failed;
            failed = false;
            keyboard->setErrorCallback(
                [](RtMidiError::Type type, const std::string&, void*) { failed = failed || type > 1; });
            keyboard->openVirtualPort("out");
            return !failed && !MidiTrigger::devices().isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(connected(), 15'000);

        MidiTrigger trigger;
        QStringList story;
        const auto tell = [&story](const QString& text) {
            QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
            story << text;
        };
        connect(&trigger, &TriggerSource::triggeredOn, this, [&] { tell("on"); });
        connect(&trigger, &TriggerSource::triggeredOff, this, [&] { tell("off"); });
        connect(&trigger, &TriggerSource::logMessage, this, tell);
        connect(&trigger, &TriggerSource::errorOccurred, this, tell);
        QVERIFY2(trigger.start(), qPrintable(story.join(u'|')));
        QCOMPARE(story.takeFirst(), "Trigger listening on MIDI input, number 60, channel 10");

        const auto send = [&](const std::vector<unsigned char>& bytes) { keyboard->sendMessage(&bytes); };
        const auto arrives = [&](const std::vector<unsigned char>& bytes) {
            send(bytes);
            return QTest::qWaitFor([&] { return !story.isEmpty(); }, 200);
        };
        // The connection takes effect a moment after it was made.
        QTRY_VERIFY(arrives({0x99, 60, 100}));
        QTest::qWait(300);
        story.clear();
        send({0x99, 60, 0});
        send({0x90, 60, 100}); // another channel
        send({0xc9, 60});
        send({0xb9, 60, 127});
        send({0x89, 60, 64});
        QTRY_COMPARE(story, QStringList({"off", "on", "off"}));

        // Unplugged: noticed, and no other device takes its place.
        keyboard.reset();
        QTRY_VERIFY(!trigger.isActive());
        QCOMPARE(story.takeLast(), "The MIDI input keyboard:out was removed.");
        auto other = std::make_unique<RtMidiOut>(RtMidi::UNIX_JACK, "other");
        other->openVirtualPort("out");
        QTRY_VERIFY(!MidiTrigger::devices().isEmpty());
        QVERIFY(!trigger.start());
        QCOMPARE(story.takeLast(), "The MIDI input keyboard:out was removed.");
        const auto isBack = [&] {
            keyboard.reset(); // JACK frees its name a moment later
            return connected() && trigger.start();
        };
        QTRY_VERIFY(isBack());
        story.clear();
        QTRY_VERIFY(arrives({0x99, 60, 100}));
        QTest::qWait(300);
        story = QStringList{{}, {}, {}};

        trigger.stop();
        send({0x99, 60, 100});
        QTest::qWait(200);
        QCOMPARE(story.size(), 3);
    }

    void cleanupTestCase()
    {
        m_jack.terminate();
        m_jack.waitForFinished();
    }

private:
    AppSettings& m_settings = AppSettings::instance();
    QProcess m_jack;
};

QTEST_GUILESS_MAIN(TestMidiTrigger)
#include "tst_miditrigger_linux.moc"
