#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <utility>

namespace {

/// Low, for speed: the test hears minutes.
constexpr int Rate = 32000;

} // namespace

class TestRecorder : public QObject {
    Q_OBJECT

    using SegmentsJoinWithoutAGapRows = Table<int, bool>;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings.outputFolder = m_folder->path();
        m_settings.channels = 2;
        m_settings.sampleRate = Rate;
        m_settings.codec = Wav;
        m_settings.splitMinutes = 60;
        m_settings.fileTemplate.clear();
        m_now = QDateTime(QDate(2024, 3, 5), QTime(14, 59, 50));
        m_heard = 0;
        m_refuse = false;
        m_archive = std::make_unique<ArchiveIndex>();
        m_archive->setFolder(m_folder->path());
    }

    void segmentsJoinWithoutAGap_data()
    {
        const SegmentsJoinWithoutAGapRows row;
        for (int codec = Mp3; codec <= M4a; ++codec)
            row(codecExtension(codec).toLatin1(), codec, codec == Wav || codec == Flac);
    }
    void segmentsJoinWithoutAGap()
    {
        const auto [codec, lossless] = SegmentsJoinWithoutAGapRows::fetch();
        m_settings.codec = codec;
        m_settings.splitMinutes = 1;
        m_now = m_now.addSecs(-30);
        Recorder recorder(m_archive.get(), nullptr, environment());
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);

        QVERIFY(recorder.start());
        hear(150); // 14:59:20 to 15:01:50
        recorder.stop();

        QCOMPARE(errors.size(), 0);
        const QList<RecordInfo> records = m_archive->records();
        QCOMPARE(records.size(), 3);
        QByteArray whole;
        const QList<qint64> lengths{40'000, 60'000, 50'000};
        for (int i = 0; i < 3; ++i) {
            QVERIFY2(qAbs(records[i].durationMs - lengths[i]) <= 20, "cut at the first block at or past the boundary");
            QCOMPARE(records[i].bytes, QFileInfo(records[i].filePath).size());
            const double seconds = AudioFiles::probe(records[i].filePath)["duration"].toString().toDouble();
            QVERIFY(qAbs(seconds * 1000 - double(records[i].durationMs)) < 100);
            if (lossless)
                whole += AudioFiles::decode(records[i].filePath);
        }
        if (lossless)
            QVERIFY(whole == Counting::frames(0, 150 * Rate));
        m_archive->rescan();
        QCOMPARE(m_archive->records().size(), 3);
    }

    void tellsWhatHappensInOrder()
    {
        m_settings.outputFolder = m_folder->filePath("new/deep");
        Recorder recorder(nullptr, nullptr, environment());
        QStringList story;
        connect(&recorder, &Recorder::fileStarted, this,
                [&](const QString& path) { story << "file " + QFileInfo(path).fileName(); });
        connect(&recorder, &Recorder::recordingChanged, this, [&](bool on) { story << (on ? "on" : "off"); });
        connect(&recorder, &Recorder::logMessage, this, [&](const QString& text) { story << text; });
        connect(&recorder, &Recorder::fileFinished, this,
                [&](const RecordInfo& info) { story << QStringLiteral("saved %1 ms").arg(info.durationMs); });
        connect(&recorder, &Recorder::elapsedChanged, this,
                [&](qint64 ms) { story << QStringLiteral("elapsed %1").arg(ms); });
        connect(&recorder, &Recorder::levelChanged, this,
                [&](double peak, double rms) { story << QStringLiteral("levels %1 %2").arg(peak).arg(rms); });

        recorder.stop("nothing yet");
        recorder.start("manual");
        recorder.start("again");
        hear(12);
        recorder.stop("manual");

        QCOMPARE(story,
                 QStringList({"file 20240305-145950.wav", "Recording 14:59 - 15:00", "on", "Recording started (manual)",
                              "saved 10000 ms", "file 20240305-150000.wav", "Recording 15:00 - 16:00", "saved 2000 ms",
                              "off", "elapsed 0", "levels -60 -60", "Recording stopped (manual)"}));
    }

    void namesFilesApart()
    {
        m_settings.fileTemplate = "a/b%sn";
        m_settings.fileSerial = 9999;
        Recorder recorder(nullptr, nullptr, environment());
        QCOMPARE(recorder.previewFileName(m_now), "ab9999.wav");
        for (int run = 0; run < 3; ++run) {
            m_settings.fileSerial = 9999;
            recorder.start();
            hear(0.1);
            recorder.stop();
            QCOMPARE(m_settings.fileSerial, 1);
        }
        recorder.start();
        recorder.stop(); // nothing heard: a header only is left alone, and not reported
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files, QDir::Name),
                 QStringList({"ab0001.wav", "ab9999.wav", "ab9999_01.wav", "ab9999_02.wav"}));
    }

    void endsInTroubleWithASentence()
    {
        Recorder recorder(m_archive.get(), nullptr, environment());
        QStringList story;
        connect(&recorder, &Recorder::errorOccurred, this, [&](const QString& text) { story << text; });
        connect(&recorder, &Recorder::logMessage, this, [&](const QString& text) { story << text; });
        const auto takeStory = [&] { return std::exchange(story, {}); };
        const QString tooLong(300, u'x');

        m_refuse = true;
        QVERIFY(!recorder.start());
        QCOMPARE(takeStory(), QStringList({"Recording 14:59 - 15:00", "No audio input device is available."}));
        m_refuse = false;

        QFile inTheWay(m_folder->filePath("file"));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        m_settings.outputFolder = inTheWay.fileName();
        QVERIFY(!recorder.start());
        QCOMPARE(takeStory(), QStringList("Cannot create the output folder: " + inTheWay.fileName()));
        m_settings.outputFolder = m_folder->path();

        m_settings.fileTemplate = tooLong;
        QVERIFY(!recorder.start());
        QVERIFY2(story.size() == 1 && story[0].startsWith("Cannot start encoding: ") && story[0].size() > 30,
                 qPrintable(takeStory().join(u'|')));
        m_settings.fileTemplate.clear();
        takeStory();

        QVERIFY(recorder.start("manual"));
        hear(1);
        Q_EMIT m_capture->errorOccurred("Broken.");
        QCOMPARE(takeStory(), QStringList({"Recording 14:59 - 15:00", "Recording started (manual)", "Broken.",
                                           "Recording stopped (capture error)"}));

        QVERIFY(recorder.start());
        takeStory();
        Q_EMIT m_capture->runningChanged(false); // without a word
        QCOMPARE(takeStory(),
                 QStringList({"The audio source has ended by itself.", "Recording stopped (capture error)"}));

        QVERIFY(recorder.start());
        m_settings.fileTemplate = tooLong;
        hear(20);
        QVERIFY(!recorder.isRecording());
        QVERIFY(story[2].startsWith("Cannot start encoding: "));
        QCOMPARE(story[3], "Recording stopped (split failed)");

        // What was finished is listed, and found again from the disk alone.
        ArchiveIndex again;
        again.setFolder(m_folder->path());
        for (const ArchiveIndex* index : {m_archive.get(), &again}) {
            QList<qint64> lengths;
            for (const RecordInfo& record : index->records()) {
                if (record.durationMs > 0)
                    lengths << record.durationMs;
            }
            QCOMPARE(lengths, QList<qint64>({1000, 9000}));
        }
    }

private:
    Recorder::Environment environment()
    {
        return {[this] { return m_now.toMSecsSinceEpoch(); },
                [this] {
                    m_capture = new ScriptedCapture;
                    m_capture->refuse = m_refuse;
                    return m_capture;
                }};
    }
    /// Lets the clock run and hears `seconds` of counting, in blocks of 20 ms.
    void hear(double seconds)
    {
        for (const qint64 end = m_heard + qint64(seconds * Rate); m_heard < end;) {
            const qint64 count = qMin<qint64>(Rate / 50, end - m_heard);
            Q_EMIT m_capture->dataReady(Counting::frames(m_heard, count));
            m_heard += count;
            m_now = m_now.addMSecs(count * 1000 / Rate);
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QDateTime m_now;
    qint64 m_heard = 0;
    bool m_refuse = false;
    QPointer<ScriptedCapture> m_capture;
    std::unique_ptr<ArchiveIndex> m_archive;
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestRecorder)
#include "tst_recorder.moc"
