#include "archive/archiveindex.h"
#include "capture/capturefactory.h"
#include "capture/qtaudiocapture.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/pulserig_linux.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

/// An input device that is recorded, and all that it says.
struct Listener : QObject {
    explicit Listener(const QByteArray& device) : capture(device)
    {
        connect(&capture, &AudioCapture::dataReady, this, [this](const QByteArray& pcm) { heard += pcm; });
        connect(&capture, &AudioCapture::errorOccurred, this, [this](const QString& text) { said << text; });
        connect(&capture, &AudioCapture::warning, this, [this](const QString& text) { said << text; });
    }
    bool records()
    {
        capture.start({44100, 2});
        heard.clear();
        return QTest::qWaitFor([this] { return !heard.isEmpty(); }, 2000);
    }
    bool stopsAtOnce()
    {
        QElapsedTimer time;
        time.start();
        capture.stop();
        return time.elapsed() < 200;
    }
    QtAudioCapture capture;
    QStringList said;
    QByteArray heard;
};

constexpr char NotOpened[] = "Could not open the audio input device.";

} // namespace

/// The input device, recorded for real through a sound server.
class TestLiveCapture : public QObject {
    Q_OBJECT

    using WhichDeviceRows = Table<QByteArray, QString, QString>;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings.outputFolder = m_folder->path();
        m_settings.backend = int(CaptureBackend::InputDevice);
        m_settings.deviceId = "line_in";
        m_settings.channels = 2;
        m_settings.codec = Wav;
        m_settings.splitMinutes = 1;
    }

    /// The first one, as no server must have been there before.
    void serverThatStartsLate()
    {
        Listener listener("line_in");
        listener.capture.start({44100, 2});
        QTRY_COMPARE(listener.said, QStringList{NotOpened});
        QVERIFY(m_rig.start());
        QVERIFY(listener.records());
        QCOMPARE(listener.capture.description(), "LineIn");
    }

    void losesNothingAtSegmentBorders_data()
    {
        const Table<int> row;
        row("wav", Wav);
        row("flac, an ffmpeg ended and another started at each border", Flac);
    }
    void losesNothingAtSegmentBorders()
    {
        const auto [codec] = Table<int>::fetch();
        m_settings.codec = codec;
        // A clock that runs 40 times as fast cuts a file every 1.5 seconds.
        QElapsedTimer real;
        real.start();
        Recorder::Environment environment = Recorder::Environment::real();
        const qint64 begin = QDateTime(QDate(2024, 3, 5), QTime(14, 58)).toMSecsSinceEpoch();
        environment.nowMs = [&] { return begin + real.elapsed() * 40; };
        ArchiveIndex archive;
        archive.setFolder(m_folder->path());
        Recorder recorder(&archive, nullptr, environment);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);

        QVERIFY(recorder.start());
        constexpr qint64 Frames = 6 * 44100;
        m_rig.play(Counting::frames(1, Frames));
        QTest::qWait(10'000);
        recorder.stop();

        QCOMPARE(errors.size(), 0);
        QVERIFY(archive.records().size() >= 5);
        QByteArray whole;
        for (const RecordInfo& record : archive.records())
            whole += AudioFiles::decode(record.filePath);
        qint64 first = 0;
        while (first < whole.size() / 4 && Counting::numberAt(whole, first) == 0)
            ++first;
        QVERIFY(whole.mid(first * 4, Frames * 4) == Counting::frames(1, Frames));
    }

    void whichDevice_data()
    {
        const WhichDeviceRows row;
        row("the default", "", "line_in2", "LineIn2");
        row("chosen", "line_in", "line_in2", "LineIn");
        row("not there", "no_such_device", "line_in2", "LineIn2");
        row("a monitor is the default", "", "program2.monitor", "LineIn");
        row("a monitor is chosen", "program2.monitor", "line_in", "Monitor of Program2");
    }
    void whichDevice()
    {
        const auto [chosen, standard, description] = WhichDeviceRows::fetch();
        QCOMPARE(QProcess::execute("pactl", {"set-default-source", standard}), 0);
        Listener listener(chosen);
        QVERIFY(listener.records());
        QCOMPARE(listener.capture.description(), description);
        QCOMPARE(listener.said, QStringList());
    }

    void deviceThatComesAndGoes()
    {
        Listener listener("usb");
        QVERIFY(listener.records());
        m_rig.play(QByteArray(44100 * 4 * 15, '\1'), "program2");
        QVERIFY(m_rig.addInput("usb", "Usb"));
        QTRY_COMPARE(listener.said, QStringList{"The audio input device Usb is back and is recorded again."});
        QCOMPARE(listener.capture.description(), "Usb");
        QTRY_VERIFY(listener.heard.contains(QByteArray(44100, '\1')));

        QVERIFY(m_rig.removeInput());
        QTRY_COMPARE(listener.said.value(1), "The audio input device Usb was removed.");
        QCOMPARE(listener.said.size(), 2);
        listener.heard.clear();
        QTest::qWait(500);
        QCOMPARE(listener.heard.size(), 0);
    }

    void serverThatHangs()
    {
        Listener listener("line_in");
        Listener waiting("line_in");
        QVERIFY(listener.records());
        m_rig.freeze(true);
        QTest::qWait(200); // what was under way
        listener.heard.clear();
        QTest::qWait(500);
        QCOMPARE(listener.heard.size(), 0);
        QVERIFY(listener.stopsAtOnce());

        QVERIFY(!listener.records());
        waiting.capture.start({44100, 2});
        QVERIFY(listener.stopsAtOnce());
        QTRY_COMPARE_WITH_TIMEOUT(waiting.said, QStringList{NotOpened}, 7000);
        m_rig.freeze(false);
        QVERIFY(listener.records());
        QVERIFY(waiting.records());
        QCOMPARE(listener.said, QStringList());
    }

    void startsAndStops()
    {
        QtAudioCapture capture("line_in");
        QSignalSpy errors(&capture, &AudioCapture::errorOccurred);
        QSignalSpy running(&capture, &AudioCapture::runningChanged);
        QSignalSpy blocks(&capture, &AudioCapture::dataReady);
        QCOMPARE(capture.description(), "(no input device)");
        QVERIFY(capture.start({8000, 1}));
        QCOMPARE(capture.description(), "LineIn");
        QTRY_VERIFY(blocks.size() > 3);
        capture.stop();
        capture.stop();
        QCOMPARE(errors.size(), 0);
        QCOMPARE(running, (QList<QVariantList>{{true}, {false}}));
    }

    void outlivesTheSoundServer_data()
    {
        const Table<int> row;
        row("away for 1 s", 1000);
        row("away for 4 s", 4000); // the audio framework looks for it after 3 s, for the last time
    }
    void outlivesTheSoundServer()
    {
        const auto [awayMs] = Table<int>::fetch();
        m_settings.splitMinutes = 0;
        ArchiveIndex archive;
        archive.setFolder(m_folder->path());
        Recorder recorder(&archive);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        QSignalSpy lines(&recorder, &Recorder::logMessage);
        QSignalSpy received(&recorder, &Recorder::audioReceived);
        QVERIFY(recorder.start());
        QTRY_VERIFY(received.size() > 20);
        m_rig.kill();
        QTRY_VERIFY(!recorder.isRecording());
        QCOMPARE(errors, (QList<QVariantList>{{"Audio input error (code 4)."}}));
        QCOMPARE(lines.last()[0].toString(), "Recording stopped (capture error)");
        QVERIFY(archive.records().value(0).durationMs > 500);

        QTest::qWait(awayMs);
        QVERIFY(m_rig.start());
        QVERIFY(recorder.start());
        received.clear();
        QTRY_VERIFY(received.size() > 5);
        recorder.stop();
        QVERIFY(archive.records().size() >= 2);
    }

private:
    PulseRig m_rig;
    AppSettings& m_settings = AppSettings::instance();
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestLiveCapture)
#include "tst_livecapture_linux.moc"
