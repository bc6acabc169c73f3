#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "encode/codecs.h"
#include "encode/wavencoder.h"
#include "engine/recorder.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>
#include <sys/mount.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr char WriteForeverArgument[] = "--write-forever";

/// A small file system, or one that cannot be written.
struct Disk {
    explicit Disk(const char* options) { mounted = mount("tmpfs", path, "tmpfs", 0, options) == 0; }
    ~Disk() { umount2(path, MNT_DETACH); }

    const QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8();
    bool mounted;
};

/// Hears a second of counting every 10 ms.
AudioCapture* fastCapture()
{
    return new TimedCapture(10ms, [heard = qint64(0)]() mutable {
        heard += 44100;
        return Counting::frames(heard - 44100, 44100);
    });
}

/// The process that is to be killed: writes a WAV and says after each block how many frames it has handed over.
int writeForever(const QString& path)
{
    WavEncoder encoder;
    if (!encoder.open(path, {44100, 2}))
        return 1;
    for (qint64 frames = 0;; frames += 441) {
        encoder.write(Counting::frames(frames, 441));
        dprintf(STDOUT_FILENO, "%lld\n", static_cast<long long>(frames + 441));
    }
}

} // namespace

class TestRecorderTrouble : public QObject {
    Q_OBJECT

    using DiskFullRows = Table<int, QString>;
    using EncoderKilledRows = Table<bool, QString>; // stopped at the same moment

private Q_SLOTS:
    void init()
    {
        m_settings.channels = 2;
        m_settings.splitMinutes = 0;
    }

    void unwritableFolder()
    {
        const Disk disk(nullptr);
        if (!disk.mounted || mount("", disk.path, "", MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            QSKIP("This machine does not allow mounting a file system.");
        m_settings.outputFolder = disk.path;
        Recorder recorder(nullptr, nullptr, m_environment);
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        m_settings.codec = Wav;
        QVERIFY(!recorder.start());
        m_settings.codec = Mp3; // ffmpeg starts before it sees that it cannot write
        QVERIFY(recorder.start());
        QTRY_VERIFY(!recorder.isRecording());
        m_settings.outputFolder = disk.path + "/sub";
        QVERIFY(!recorder.start());
        QCOMPARE(errors.size(), 3);
        QCOMPARE(errors[0][0].toString(), "Cannot start encoding: Read-only file system");
        QVERIFY(errors[1][0].toString().startsWith("Write failed: ffmpeg ended early (exit code ")); // by its version
        QCOMPARE(errors[2][0].toString(), "Cannot create the output folder: " + m_settings.outputFolder);
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

        QVERIFY(recorder.start());
        QFile children(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
        QVERIFY(children.open(QIODevice::ReadOnly));
        const QList<QByteArray> pids = children.readAll().simplified().split(' ');
        QCOMPARE(pids.size(), 1);
        QTest::qWait(500);
        kill(pids[0].toInt(), SIGKILL);
        if (stopped)
            recorder.stop();
        QTRY_VERIFY(!recorder.isRecording());

        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors[0][0].toString().endsWith(error), qPrintable(errors[0][0].toString()));
        QCOMPARE(archive.records().size(), 1);
        QCOMPARE(listed, stopped ? 1 : 0);
    }

    void programKilled()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("20240305-145950.wav");
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {WriteForeverArgument, path});
        QTRY_VERIFY(writer.bytesAvailable() > 2000);
        writer.kill();
        QVERIFY(writer.waitForFinished());
        const qint64 handedOver = writer.readAllStandardOutput().trimmed().split('\n').constLast().toLongLong();

        ArchiveIndex archive;
        archive.setFolder(folder.path());
        QCOMPARE(archive.records().size(), 1);
        const qint64 bytes = archive.records().at(0).bytes - WavEncoder::HeaderBytes;
        QVERIFY(bytes >= handedOver * 4);
        QCOMPARE(archive.records().at(0).durationMs, bytes * 1000 / (44100 * 4));
    }

private:
    Recorder::Environment m_environment{QDateTime::currentMSecsSinceEpoch, fastCapture};
    AppSettings& m_settings = AppSettings::instance();
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == WriteForeverArgument)
        return writeForever(app.arguments().value(2));
    TestRecorderTrouble test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_recordertrouble_linux.moc"
