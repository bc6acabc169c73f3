#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <sys/mount.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

/// A small file system.
struct Disk {
    explicit Disk(const char* options) { mounted = mount("tmpfs", path, "tmpfs", 0, options) == 0; }
    ~Disk() { umount2(path, MNT_DETACH); }

    const QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8();
    bool mounted;
};

/// Hears counting.
class CountingCapture : public ScriptedCapture {
public:
    /// \param next the number that comes next; goes on counting here.
    CountingCapture(qint64& next, int framesPerBlock)
    {
        m_timer.setInterval(10ms);
        m_timer.callOnTimeout(this, [this, &next, framesPerBlock] {
            const QByteArray block = Counting::frames(next, framesPerBlock);
            next += framesPerBlock;
            Q_EMIT dataReady(block);
        });
    }
    bool start(const PcmFormat&) override
    {
        m_timer.start();
        return true;
    }
    void stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
};

/// Cannot be opened, which shows at once or later.
struct FailingCapture : ScriptedCapture {
    explicit FailingCapture(bool isLate) : late(isLate) {}
    bool start(const PcmFormat&) override
    {
        QTimer::singleShot(late ? 20ms : 0ms, this, [this] { Q_EMIT errorOccurred("no device"); });
        return late;
    }
    bool late;
};

/// The one ffmpeg that this process runs.
pid_t childId()
{
    QFile children(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
    const bool opened = children.open(QIODevice::ReadOnly);
    const QList<QByteArray> pids = opened ? children.readAll().simplified().split(' ') : QList<QByteArray>();
    return pids.size() == 1 ? pids[0].toInt() : 0;
}

} // namespace

class TestRecorderTrouble : public QObject {
    Q_OBJECT

    using DiskFullRows = Table<int, QString>;
    using FailedStartRows = Table<int, bool>; // codec, late
    using EncoderKilledRows = Table<bool, QString>; // stopped at the same moment

private Q_SLOTS:
    void init()
    {
        m_settings.channels = 2;
        m_settings.splitMinutes = 0;
        m_next = 0;
        m_framesPerBlock = 44100;
    }

    void diskFull_data()
    {
        const DiskFullRows row;
        row("written by ourselves", Wav, "Write failed: No space left on device");
        row("written by ffmpeg", Flac, "Write failed: ffmpeg ended early (exit code ");
    }
    void diskFull()
    {
        const auto [codec, error] = DiskFullRows::fetch();
        const Disk disk("size=2m");
        if (!disk.mounted)
            QSKIP("This machine does not allow mounting a file system.");
        m_settings.outputFolder = disk.path;
        m_settings.codec = codec;
        ArchiveIndex archive;
        archive.setFolder(disk.path);
        Recorder recorder(&archive, nullptr, m_environment);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        QSignalSpy lines(&recorder, &Recorder::logMessage);

        QVERIFY(recorder.start());
        QTRY_VERIFY_WITH_TIMEOUT(!recorder.isRecording(), 20'000);

        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors[0][0].toString().startsWith(error), qPrintable(errors[0][0].toString()));
        QCOMPARE(lines.last()[0].toString(), "Recording stopped (write error)");
        QCOMPARE(archive.records().size(), 1);
        ArchiveIndex again;
        again.setFolder(disk.path);
        QCOMPARE(again.records().size(), 1);
        const QByteArray audio = AudioFiles::decode(again.records().at(0).filePath);
        QVERIFY(audio.size() > 1'000'000);
        QVERIFY(audio == Counting::frames(0, audio.size() / 4));
    }

    /// The list first fits, then fails in the flush, and from 16 KB on in the write itself.
    void diskFullForTheIndex()
    {
        const Disk disk("size=12k");
        if (!disk.mounted)
            QSKIP("This machine does not allow mounting a file system.");
        ArchiveIndex index;
        index.setFolder(disk.path);
        for (int i = 0; i < 300; ++i)
            index.addRecord({QString::number(i), {}, QDateTime::currentDateTime(), 1000, 1000, false});
        QFile file(disk.path + "/records.json");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const qsizetype saved = QJsonDocument::fromJson(file.readAll()).array().size();
        QVERIFY2(saved > 0 && saved < 300, QByteArray::number(saved));
        QCOMPARE(QDir(disk.path).entryList(QDir::Files), {"records.json"});
    }

    void encoderKilled_data()
    {
        const EncoderKilledRows row;
        row("while recording", false, "Write failed: Process crashed");
        row("at the end", true, ".flac may be incomplete: Process crashed");
    }
    void encoderKilled()
    {
        const auto [stopped, error] = EncoderKilledRows::fetch();
        QTemporaryDir folder;
        m_settings.outputFolder = folder.path();
        m_settings.codec = Flac;
        ArchiveIndex archive;
        archive.setFolder(folder.path());
        Recorder recorder(&archive, nullptr, m_environment);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        qsizetype listed = 0;
        connect(&recorder, &Recorder::errorOccurred, this, [&] { listed = archive.records().size(); });

        const QSignalSpy heard(&recorder, &Recorder::audioReceived);
        QVERIFY(recorder.start());
        const pid_t encoder = childId();
        QVERIFY(encoder > 0);
        QTRY_VERIFY(heard.size() > 20);
        kill(encoder, SIGKILL);
        if (stopped)
            recorder.stop();
        QTRY_VERIFY(!recorder.isRecording());

        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors[0][0].toString().endsWith(error), qPrintable(errors[0][0].toString()));
        QCOMPARE(archive.records().size(), 1);
        QCOMPARE(listed, stopped ? 1 : 0);
    }

    void failedStartLeavesNothing_data()
    {
        const FailedStartRows row;
        row("wav", Wav, false);
        row("mp3", Mp3, false);
        row("flac", Flac, true);
        row("wav, late", Wav, true);
    }
    void failedStartLeavesNothing()
    {
        const auto [codec, late] = FailedStartRows::fetch();
        QTemporaryDir folder;
        m_settings.outputFolder = folder.path();
        m_settings.codec = codec;
        m_settings.fileSerial = 9999;
        const Recorder::Environment environment{QDateTime::currentMSecsSinceEpoch,
                                                [late = late] { return new FailingCapture(late); }};
        Recorder recorder(nullptr, nullptr, environment);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(recorder.start(), late);
            QTRY_VERIFY(!recorder.isRecording());
            QVERIFY(!recorder.hasHeard());
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
            QCOMPARE(m_settings.fileSerial, 9999);
        }
    }

    /// Nothing that the file did not take is lost: the next one begins with it.
    void encoderStuck_data()
    {
        const Table<bool> row;
        row("comes to life again", false);
        row("is killed", true);
    }
    void encoderStuck()
    {
        const auto [killed] = Table<bool>::fetch();
        QTemporaryDir folder;
        m_settings.outputFolder = folder.path();
        m_settings.codec = Flac;
        m_framesPerBlock = 1000;
        Recorder recorder(nullptr, nullptr, m_environment);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        QSignalSpy files(&recorder, &Recorder::fileStarted);
        QSignalSpy closed(&recorder, &Recorder::fileFinished);
        QVERIFY(recorder.start());
        const pid_t encoder = childId();
        QTRY_VERIFY(m_next > 50'000);
        kill(encoder, SIGSTOP);
        const qint64 stuckAt = m_next;
        QElapsedTimer time;
        time.start();
        qint64 longest = 0;
        while (!killed ? files.size() < 2 && time.elapsed() < 15'000 : m_next < stuckAt + 200'000) {
            QElapsedTimer turn;
            turn.start();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            longest = qMax(longest, turn.elapsed());
        }
        QVERIFY2(longest < 500, qPrintable(QString::number(longest)));
        kill(encoder, killed ? SIGKILL : SIGCONT);
        if (killed) {
            QTRY_VERIFY(!recorder.isRecording());
            QCOMPARE(errors.size(), 1);
            QVERIFY(recorder.isWorthRetrying() && recorder.hasHeard());
            QVERIFY(recorder.start());
        } else {
            QVERIFY(time.elapsed() >= 10'000);
            QTRY_COMPARE(closed.size(), 1);
            QVERIFY(recorder.isRecording());
            QCOMPARE(errors.size(), 1);
        }
        QTRY_VERIFY(files.size() == 2 && m_next > stuckAt + 250'000);
        recorder.stop();

        const auto first = killed ? QByteArray() : AudioFiles::decode(files[0][0].toString());
        const auto second = AudioFiles::decode(files[1][0].toString());
        const qint64 held = m_next - second.size() / 4;
        QVERIFY(second == Counting::frames(held, second.size() / 4));
        constexpr qint64 PipeFrames = 65536 / 4; // that the child could still have read
        QVERIFY2(held <= stuckAt + PipeFrames + m_framesPerBlock, qPrintable(QString::number(held - stuckAt)));
        if (killed)
            return;
        QVERIFY(first == Counting::frames(0, first.size() / 4));
        QVERIFY(first.size() / 4 >= held);
    }

    /// The next file begins with what the last one did not take, and nobody waits for that one.
    void encoderHangsAtTheSplit()
    {
        QTemporaryDir folder;
        m_settings.outputFolder = folder.path();
        m_settings.codec = Flac;
        m_settings.splitMinutes = 1;
        m_framesPerBlock = 1000;
        qint64 aheadMs = 0;
        Recorder::Environment environment = m_environment;
        environment.nowMs = [&aheadMs] { return QDateTime::currentMSecsSinceEpoch() + aheadMs; };
        QSignalSpy* files = nullptr;
        qint64 longest = 0;
        qint64 stuckAt = 0;
        {
            Recorder recorder(nullptr, nullptr, environment);
            files = new QSignalSpy(&recorder, &Recorder::fileStarted);
            QVERIFY(recorder.start());
            const pid_t encoder = childId();
            QTRY_VERIFY(m_next > 20'000);
            kill(encoder, SIGSTOP);
            stuckAt = m_next;
            QTRY_VERIFY(m_next > stuckAt + 200'000);
            aheadMs = 60'000;
            QElapsedTimer time;
            time.start();
            while (time.elapsed() < 1000) {
                QElapsedTimer turn;
                turn.start();
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                longest = qMax(longest, turn.elapsed());
            }
            kill(encoder, SIGCONT);
        } // waits for both
        const std::unique_ptr<QSignalSpy> started(files);
        QCOMPARE(started->size(), 2);
        QVERIFY2(longest < 500, qPrintable(QString::number(longest)));
        const auto first = AudioFiles::decode(started->at(0)[0].toString());
        const auto second = AudioFiles::decode(started->at(1)[0].toString());
        const qint64 held = m_next - second.size() / 4;
        QVERIFY(first == Counting::frames(0, first.size() / 4));
        QVERIFY(second == Counting::frames(held, second.size() / 4));
        // No gap. What QProcess had of it comes twice when the child comes to life again.
        const qint64 twice = first.size() / 4 - held;
        QVERIFY2(twice >= 0 && twice < 10'000, qPrintable(QString::number(twice)));
    }

private:
    qint64 m_next = 0;
    int m_framesPerBlock = 44100;
    Recorder::Environment m_environment{QDateTime::currentMSecsSinceEpoch,
                                        [this] { return new CountingCapture(m_next, m_framesPerBlock); }};
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestRecorderTrouble)
#include "tst_recordertrouble_linux.moc"
