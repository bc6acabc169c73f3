#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QDir>
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

/// Hears a second of counting every 10 ms.
class FastCapture : public ScriptedCapture {
public:
    FastCapture()
    {
        m_timer.setInterval(10ms);
        m_timer.callOnTimeout(this, [this] {
            Q_EMIT dataReady(Counting::frames(m_heard, 44100));
            m_heard += 44100;
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
    qint64 m_heard = 0;
};

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
        QFile children(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
        QVERIFY(children.open(QIODevice::ReadOnly));
        const QList<QByteArray> pids = children.readAll().simplified().split(' ');
        QCOMPARE(pids.size(), 1);
        QTRY_VERIFY(heard.size() > 20);
        kill(pids[0].toInt(), SIGKILL);
        if (stopped)
            recorder.stop();
        QTRY_VERIFY(!recorder.isRecording());

        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors[0][0].toString().endsWith(error), qPrintable(errors[0][0].toString()));
        QCOMPARE(archive.records().size(), 1);
        QCOMPARE(listed, stopped ? 1 : 0);
    }

private:
    Recorder::Environment m_environment{QDateTime::currentMSecsSinceEpoch, [] { return new FastCapture; }};
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestRecorderTrouble)
#include "tst_recordertrouble_linux.moc"
