#include "support/copyrig.h"
#include "support/smalldisk_linux.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int threads()
{
    return int(QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

} // namespace

class TestArchiveCopyTrouble : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void offHasNoThread()
    {
        const int before = threads();
        CopyRig rig;
        AppSettings::instance().copyEnabled = false;
        rig.start();
        QCOMPARE(threads(), before);
        AppSettings::instance().copyEnabled = true;
        rig.copy->reload();
        QCOMPARE(threads(), before + 1);
    }

    /// The second file does not fit; then there is room.
    void waitsForRoom()
    {
        const SmallDisk disk("tmpfs", 4);
        if (!disk.mounted)
            QSKIP("This machine does not allow mounting a file system.");
        CopyRig rig;
        rig.target = disk.path;
        AppSettings::instance().copyFolder = disk.path;
        CopyRig::write(disk.path + "/foreign", QByteArray(1'000'000, 'x'));
        rig.add("a.wav", 2, QByteArray(1'500'000, 'a'));
        rig.add("b.wav", 1, QByteArray(1'500'000, 'b'));
        rig.start();
        QTRY_COMPARE(rig.errors.size(), 1);
        QVERIFY2(rig.errors[0].contains("is full"), qPrintable(rig.errors[0]));
        QCOMPARE(rig.copied, QStringList("a.wav"));
        QCOMPARE(rig.copy->filesBehind(), 1);
        QVERIFY(QFile::remove(disk.path + "/foreign"));
        QTRY_COMPARE(rig.copied.size(), 2);
        QCOMPARE(rig.content("b.wav"), QByteArray(1'500'000, 'b'));
        QCOMPARE(rig.errors.size(), 1);
        QCOMPARE(rig.lines.size(), 1);
    }

    /// A file in the target that does not open, as on a share whose server is gone.
    void neverWaitsForATargetThatHangs()
    {
        CopyRig rig;
        QVERIFY(QDir().mkpath(rig.target));
        const QByteArray pipe = (rig.target + "/a.wav").toUtf8();
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        rig.add("a.wav", 3, ""); // of the pipe's size, so that the two are compared
        rig.add("b.wav", 2);
        rig.start();
        QTRY_COMPARE(rig.errors.size(), 1);
        QVERIFY2(rig.errors[0].contains("does not answer"), qPrintable(rig.errors[0]));
        QElapsedTimer clock;
        clock.start();
        const RecordInfo late = rig.add("c.wav", 1);
        QTRY_COMPARE(rig.copy->filesBehind(), 3);
        QVERIFY(rig.copy->copyOf(late).isEmpty());
        rig.start(); // the end of one and the start of another, which hangs as well
        QTRY_COMPARE(rig.errors.size(), 2);
        AppSettings::instance().copyFolder = rig.dir.filePath("elsewhere"); // another folder does not
        rig.copy->reload();
        QTRY_COMPARE(rig.copied.size(), 3);
        AppSettings::instance().copyFolder = rig.target;
        rig.copy->reload();
        QTRY_COMPARE(rig.errors.size(), 3);
        QVERIFY2(clock.elapsed() < 5000, QByteArray::number(clock.elapsed()));
        // The server is back. Those that were given up do nothing any more.
        const int fd = open(pipe.constData(), O_WRONLY | O_NONBLOCK);
        QVERIFY(QFile::remove(rig.target + "/a.wav"));
        close(fd);
        QTRY_COMPARE(rig.there(), QStringList({"a.wav", "b.wav", "c.wav"}));
        QCOMPARE(rig.lines.size(), 1);
        QVERIFY(rig.lines[0].startsWith("The second copy goes on after"));
    }

    void killedInTheMiddle()
    {
        CopyRig rig;
        rig.add("a.wav", 1, QByteArray(2'000'000, 'a'));
        QProcess::execute(QCoreApplication::applicationFilePath(), {"copy-and-die", rig.dir.path()});
        const auto hidden = [&] { return QDir(rig.target + "/.tidewell").entryList({"*.part.*"}, QDir::Files); };
        QCOMPARE(hidden().size(), 1); // it was under way
        QVERIFY(rig.there().isEmpty());
        rig.start();
        QTRY_COMPARE(rig.copied, QStringList("a.wav"));
        QCOMPARE(rig.content("a.wav"), QByteArray(2'000'000, 'a'));
        QVERIFY(hidden().isEmpty());
        QVERIFY(rig.errors.isEmpty());
    }

public:
    /// Copies the recordings in this folder and is killed when the first is complete, but not compared.
    static int copyAndDie(const QString& folder)
    {
        CopyRig rig;
        AppSettings::instance().copyFolder = folder + "/second";
        rig.index.setFolder(folder + "/recordings");
        rig.beforeCompare = [](const QString&) { raise(SIGKILL); };
        rig.start();
        return QCoreApplication::exec();
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && QByteArray(argv[1]) == "copy-and-die")
        return TestArchiveCopyTrouble::copyAndDie(QString::fromLocal8Bit(argv[2]));
    TestArchiveCopyTrouble test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_archivecopytrouble_linux.moc"
