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
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>

/// The input device, recorded for real through a sound server.
class TestLiveCapture : public QObject {
    Q_OBJECT

    using LosesNothingAtSegmentBordersRows = Table<int>;

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

    void losesNothingAtSegmentBorders_data()
    {
        const LosesNothingAtSegmentBordersRows row;
        row("wav", Wav);
        row("flac, an ffmpeg ended and another started at each border", Flac);
    }
    void losesNothingAtSegmentBorders()
    {
        const auto [codec] = LosesNothingAtSegmentBordersRows::fetch();
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
        rig->play(Counting::frames(1, Frames));
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

    void takesTheDefaultForADeviceThatIsGone()
    {
        QtAudioCapture capture("no_such_device");
        QSignalSpy errors(&capture, &AudioCapture::errorOccurred);
        QSignalSpy running(&capture, &AudioCapture::runningChanged);
        QSignalSpy blocks(&capture, &AudioCapture::dataReady);
        QCOMPARE(capture.description(), "(no input device)");
        QVERIFY(capture.start({8000, 1}));
        QTRY_VERIFY(blocks.size() > 3);
        capture.stop();
        capture.stop();
        QCOMPARE(errors.size(), 0);
        QCOMPARE(running, (QList<QVariantList>{{true}, {false}}));
    }

    void outlivesTheSoundServer()
    {
        m_settings.splitMinutes = 0;
        ArchiveIndex archive;
        archive.setFolder(m_folder->path());
        Recorder recorder(&archive);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        QSignalSpy lines(&recorder, &Recorder::logMessage);
        QSignalSpy received(&recorder, &Recorder::audioReceived);
        QVERIFY(recorder.start());
        QTRY_VERIFY(received.size() > 20);
        rig->kill();
        QTRY_VERIFY(!recorder.isRecording());
        QCOMPARE(errors, (QList<QVariantList>{{"Audio input error (code 4)."}}));
        QCOMPARE(lines.last()[0].toString(), "Recording stopped (capture error)");
        QVERIFY(archive.records().value(0).durationMs > 500);

        QVERIFY(rig->start());
        QTRY_VERIFY_WITH_TIMEOUT(recorder.start(), 20'000);
        received.clear();
        QTRY_VERIFY(received.size() > 5);
        recorder.stop();
        QVERIFY(archive.records().size() >= 2);
    }

public:
    static inline PulseRig* rig = nullptr;

private:
    AppSettings& m_settings = AppSettings::instance();
    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char* argv[])
{
    PulseRig rig;
    if (!rig.start())
        qFatal("The private sound server did not start.");
    QGuiApplication app(argc, argv);
    TestLiveCapture::rig = &rig;
    TestLiveCapture test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_livecapture_linux.moc"
