#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "capture/audiocapture.h"
#include "encode/codecs.h"
#include "encode/wavencoder.h"
#include "engine/recorder.h"
#include "support/audiofiles.h"
#include "support/counting.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <sys/mount.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr char WriteForeverArgument[] = "--write-forever";

/// Hears a second of counting every 10 ms.
class FastCapture : public AudioCapture {
    Q_OBJECT
public:
    bool start(const PcmFormat&) override
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            Q_EMIT dataReady(Counting::frames(m_heard, 44100));
            m_heard += 44100;
        });
        m_timer.start(10ms);
        return true;
    }
    void stop() override { m_timer.stop(); }
    bool isRunning() const override { return m_timer.isActive(); }
    QString description() const override { return QStringLiteral("Fast"); }

private:
    QTimer m_timer;
    qint64 m_heard = 0;
};

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

private Q_SLOTS:
    void init();
    void unwritableFolder();
    void diskFull_data();
    void diskFull();
    void encoderKilled();
    void programKilled();

private:
    Recorder::Environment m_environment{QDateTime::currentMSecsSinceEpoch, [] { return new FastCapture; }};
    AppSettings& m_settings = AppSettings::instance();
};

void TestRecorderTrouble::init()
{
    m_settings.channels = 2;
    m_settings.splitMinutes = 0;
}

void TestRecorderTrouble::unwritableFolder()
{
    QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8();
    if (mount("tmpfs", path, "tmpfs", 0, nullptr) != 0 || mount("", path, "", MS_REMOUNT | MS_RDONLY, nullptr) != 0)
        QSKIP("This machine does not allow mounting a file system.");
    const auto unmount = qScopeGuard([&] { umount2(path, MNT_DETACH); });
    m_settings.outputFolder = folder.path();
    Recorder recorder(nullptr, nullptr, m_environment);
    QSignalSpy errors(&recorder, &Recorder::errorOccurred);
    m_settings.codec = Wav;
    QVERIFY(!recorder.start());
    m_settings.codec = Mp3; // ffmpeg starts before it sees that it cannot write
    QVERIFY(recorder.start());
    QTRY_VERIFY(!recorder.isRecording());
    m_settings.outputFolder = folder.filePath("sub");
    QVERIFY(!recorder.start());
    QCOMPARE(errors, (QList<QVariantList>{{"Cannot start encoding: Read-only file system"},
                                          {"Write failed: ffmpeg ended early (exit code 1)."},
                                          {"Cannot create the output folder: " + m_settings.outputFolder}}));
}

void TestRecorderTrouble::diskFull_data()
{
    QTest::addColumn<int>("codec");
    QTest::addColumn<QString>("error");
    QTest::newRow("written by ourselves") << int(Wav) << "Write failed: No space left on device";
    QTest::newRow("written by ffmpeg") << int(Flac) << "Write failed: ffmpeg ended early (exit code ";
}

void TestRecorderTrouble::diskFull()
{
    QFETCH(int, codec);
    QFETCH(QString, error);
    QTemporaryDir folder;
    if (mount("tmpfs", folder.path().toUtf8(), "tmpfs", 0, "size=2m") != 0)
        QSKIP("This machine does not allow mounting a small file system.");
    const auto unmount = qScopeGuard([&] { umount2(folder.path().toUtf8(), MNT_DETACH); });
    m_settings.outputFolder = folder.path();
    m_settings.codec = codec;
    ArchiveIndex archive;
    archive.setFolder(folder.path());
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
    again.setFolder(folder.path());
    QCOMPARE(again.records().size(), 1);
    const QByteArray audio = AudioFiles::decode(again.records().at(0).filePath);
    QVERIFY(audio.size() > 1'000'000);
    QVERIFY(audio == Counting::frames(0, audio.size() / 4));
}

void TestRecorderTrouble::encoderKilled()
{
    QTemporaryDir folder;
    m_settings.outputFolder = folder.path();
    m_settings.codec = Flac;
    ArchiveIndex archive;
    archive.setFolder(folder.path());
    Recorder recorder(&archive, nullptr, m_environment);
    QSignalSpy errors(&recorder, &Recorder::errorOccurred);

    QVERIFY(recorder.start());
    QFile children(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
    QVERIFY(children.open(QIODevice::ReadOnly));
    const QList<QByteArray> pids = children.readAll().simplified().split(' ');
    QCOMPARE(pids.size(), 1);
    QTest::qWait(500);
    kill(pids[0].toInt(), SIGKILL);
    QTRY_VERIFY(!recorder.isRecording());

    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors[0][0].toString(), "Write failed: Process crashed");
    QCOMPARE(archive.records().size(), 1);
}

void TestRecorderTrouble::programKilled()
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

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == WriteForeverArgument)
        return writeForever(app.arguments().value(2));
    TestRecorderTrouble test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_recordertrouble_linux.moc"
