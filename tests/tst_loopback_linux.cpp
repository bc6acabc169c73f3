#include "capture/audiocapture.h"
#include "capture/capturefactory.h"
#include "capture/loopback.h"
#include "settings/appsettings.h"
#include "support/counting.h"
#include "support/pulserig_linux.h"
#include "support/samples.h"

#include <QElapsedTimer>
#include <QTest>

/// A loopback capture at work, and all that it says.
struct Listener : QObject {
    explicit Listener(const QByteArray& device, const PcmFormat& format = {44100, 2})
    {
        AppSettings::instance().playbackId = device;
        capture.reset(createCapture(nullptr));
        connect(capture.get(), &AudioCapture::errorOccurred, this, [this](const QString& text) { errors << text; });
        connect(capture.get(), &AudioCapture::dataReady, this, [this](const QByteArray& pcm) { heard += pcm; });
        capture->start(format);
        if (QTest::qWaitFor([this] { return !heard.isEmpty(); }))
            heard.clear();
    }
    std::unique_ptr<AudioCapture> capture;
    QStringList errors;
    QByteArray heard;
};

/// What a sound server plays, recorded for real.
class TestLoopbackLinux : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        AppSettings::instance().backend = int(CaptureBackend::Loopback);
        AppSettings::instance().softLimit = false;
        QVERIFY(m_rig.start());
        pactl("set-default-sink program");
        QCOMPARE(playbackDevices().value(1).id, "program2");
        QCOMPARE(playbackDevices().value(1).name, "Program2");
    }

    void sound()
    {
        Listener exact("program");
        Listener converted("program", {22050, 1});
        const QByteArray played = Counting::frames(1, 4 * 44100) + bytesOf({10000, 20000}).repeated(44100);
        m_rig.play(played);
        QTRY_VERIFY_WITH_TIMEOUT(exact.heard.contains(played), 15'000);
        QTRY_VERIFY(converted.heard.contains(bytesOf({15000, 0})));
        QVERIFY(qAbs(samplesOf(converted.heard).count(15000) - 22050) <= 2);
    }

    void silence()
    {
        for (const char* state : {"suspend-sink program 1", "suspend-sink program 0"}) {
            pactl(state);
            Listener listener("program", {44100, 1});
            QTest::qWait(3000);
            QVERIFY(qAbs(listener.heard.size() / 2 - 3 * 44100) < 44100 / 2);
            QCOMPARE(listener.heard.count('\0'), listener.heard.size());
        }
    }

    void devicesThatComeAndGo()
    {
        pactl("load-module module-remap-sink sink_name=third master=program2");
        Listener listener("third");
        const QString third = listener.capture->description();
        pactl("unload-module module-remap-sink");
        QTRY_COMPARE(listener.capture->description(), "Program");
        pactl("set-default-sink program2");
        QTRY_COMPARE(listener.capture->description(), "Program2");
        m_rig.play(QByteArray(4 * 44100, '\1'), "program2");
        QTRY_VERIFY(listener.heard.size() - listener.heard.count('\0') > 150'000);
        pactl("load-module module-remap-sink sink_name=third master=program2");
        QTRY_COMPARE(listener.capture->description(), third);
        QCOMPARE(listener.errors.size(), 0);
    }

    void serverThatHangsAndDies()
    {
        pactl("suspend-sink program2 1");
        Listener suspended("program2");
        Listener listener("program");
        QElapsedTimer time;
        time.start();
        m_rig.freeze(true);
        QTest::qWait(2000);
        const qsizetype heard = listener.heard.size();
        suspended.heard.clear();
        QTest::qWait(2500);
        QCOMPARE(listener.heard.size(), heard); // silence would hide that nothing is recorded
        QCOMPARE(suspended.heard.size(), 0);
        m_rig.freeze(false);
        QTRY_VERIFY(!suspended.heard.isEmpty());
        QTest::qWait(1500);
        const qint64 heardMs = listener.heard.size() * 10 / 1764;
        QVERIFY(qAbs(heardMs - time.elapsed()) < 1000); // the server itself delivers what it owes

        m_rig.freeze(true);
        time.start();
        suspended.capture->stop();
        QVERIFY(time.elapsed() < 200);
        QCOMPARE(playbackDevices().size(), 0);
        QVERIFY(time.elapsed() < 4000);

        m_rig.kill();
        QTRY_COMPARE(listener.errors.size(), 1);
        listener.capture->start({});
        QTRY_COMPARE(listener.errors.join(u' '), "The connection to the sound server was lost (Connection terminated). "
                                                 "Could not connect to the sound server (Connection refused).");
    }

private:
    static void pactl(const QString& words) { QCOMPARE(QProcess::execute("pactl", words.split(u' ')), 0); }
    PulseRig m_rig;
};

QTEST_GUILESS_MAIN(TestLoopbackLinux)
#include "tst_loopback_linux.moc"
