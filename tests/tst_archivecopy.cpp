#include "support/copyrig.h"
#include "support/table.h"

#include <QSignalSpy>

class TestArchiveCopy : public QObject {
    Q_OBJECT

    using Folders = Table<QString, QString, QString>; // copy, recordings; what is wrong

private Q_SLOTS:
    void folders_data()
    {
        const Folders row;
#ifdef Q_OS_WIN
        const QString root = QStringLiteral("D:");
        row("other case", "d:/REC/x", "D:\\rec", "must be outside");
#else
        const QString root;
        row("other case", "/REC/x", "/rec", "");
#endif
        row("none", " ", root + "/rec", "Choose the folder");
        row("relative", "copies", root + "/rec", "absolute");
        row("the same", root + "/rec/", root + "/rec", "must be outside");
        row("inside, by detours", root + "/a/../rec//x", root + "/rec", "must be outside");
        row("around", root + "/", root + "/rec", "");
        row("begins alike", root + "/rec2", root + "/rec", "");
        row("no recordings folder", root + "/x", "", "");
    }
    void folders()
    {
        const auto [folder, recordings, problem] = Folders::fetch();
        const QString said = ArchiveCopy::problemOf(folder, recordings);
        QCOMPARE(said.isEmpty(), problem.isEmpty());
        QVERIFY2(said.contains(problem), qPrintable(said));
    }

    void copiesTheOldestFirst()
    {
        CopyRig rig;
        rig.add("b.wav", 2, QByteArray(3'000'000, 'b'));
        rig.add("c.wav", 1);
        const RecordInfo oldest = rig.add("a.wav", 3);
        rig.add("ancient.wav", 24 * 400); // older than copies are kept
        rig.start();
        QTRY_COMPARE(rig.copied, QStringList({"a.wav", "b.wav", "c.wav"}));
        QCOMPARE(rig.there(), QStringList({"a.wav", "b.wav", "c.wav"}));
        QCOMPARE(rig.content("b.wav"), QByteArray(3'000'000, 'b'));
        QCOMPARE(QFileInfo(rig.target + "/b.wav").lastModified().toSecsSinceEpoch(),
                 QFileInfo(rig.source + "/b.wav").lastModified().toSecsSinceEpoch());
        QCOMPARE(rig.copy->filesBehind(), 0);
        QVERIFY(!rig.copy->behindSince().isValid());
        QCOMPARE(rig.copy->copyOf(oldest), rig.target + "/a.wav");
        rig.add("d.wav", 0); // is closed while it runs
        QVERIFY(QTest::qWaitFor([&] { return rig.copy->filesBehind() == 1; }));
        QVERIFY(rig.copy->behindSince().isValid());
        QTRY_COMPARE(rig.copied.size(), 4);
        // After a restart nothing is copied again, and a damaged original does not replace its copy.
        CopyRig::write(rig.source + "/a.wav", "");
        rig.index.rescan();
        rig.start();
        rig.add("e.wav", 0);
        QTRY_COMPARE(rig.copied.size(), 5);
        QCOMPARE(rig.copy->copyOf(oldest), rig.target + "/a.wav");
        QCOMPARE(rig.content("a.wav"), "audio");
        QVERIFY(rig.errors.isEmpty() && rig.lines.isEmpty());
    }

    /// The drive is away, or away with its mount point left, while three files are closed.
    void catchesUp_data()
    {
        const Table<bool, QString> row;
        row("folder is gone", false, "is not there");
        row("an empty folder is in its place", true, "are not in the folder");
    }
    void catchesUp()
    {
        const auto [mountPoint, error] = Table<bool, QString>::fetch();
        CopyRig rig;
        const RecordInfo first = rig.add("a.wav", 9);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        rig.copy.reset();
        QVERIFY(QDir().rename(rig.target, rig.target + "-away"));
        if (mountPoint)
            QVERIFY(QDir().mkdir(rig.target));
        rig.start();
        for (const auto& [name, hoursAgo] : {std::pair("c.wav", 0), {"d.wav", -1}, {"b.wav", 0}})
            rig.add(name, hoursAgo);
        QTRY_COMPARE(rig.copy->filesBehind(), 3); // of the first it is not known yet
        QTRY_COMPARE(rig.errors.size(), 1);
        QVERIFY2(rig.errors[0].contains(error), qPrintable(rig.errors[0]));
        QCOMPARE(rig.copy->lastError(), rig.errors[0]);
        QVERIFY(rig.copy->copyOf(first).isEmpty());
        QTest::qWait(200); // it tries again and again
        QCOMPARE(rig.errors.size(), 1);
        QVERIFY(QDir(rig.target).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
        QVERIFY(!mountPoint || QDir().rmdir(rig.target));

        QVERIFY(QDir().rename(rig.target + "-away", rig.target));
        QTRY_COMPARE(rig.copied, QStringList({"a.wav", "c.wav", "b.wav", "d.wav"}));
        QCOMPARE(rig.lines.size(), 1);
        QVERIFY2(rig.lines[0].startsWith("The second copy goes on after 0:00:0"), qPrintable(rig.lines[0]));
        QVERIFY(rig.copy->lastError().isEmpty());
        QCOMPARE(rig.copy->copyOf(first), rig.target + "/a.wav");
    }

    void beginsAnewWhenSwitchedOffAndOn()
    {
        CopyRig rig;
        rig.add("a.wav", 1);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        AppSettings::instance().copyEnabled = false;
        rig.copy->reload();
        QVERIFY(!rig.copy->isEnabled());
        QVERIFY(QDir(rig.target).removeRecursively());
        AppSettings::instance().copyEnabled = true;
        rig.copy->reload();
        QTRY_COMPARE(rig.copied.size(), 2);
        QVERIFY(rig.errors.isEmpty());
    }

    void noticesDamage()
    {
        CopyRig rig;
        int copies = 0;
        QStringList thereBefore;
        rig.beforeCompare = [&](const QString& path) {
            thereBefore = rig.there();
            QFile part(path);
            if (++copies == 1 && part.open(QIODevice::ReadWrite))
                part.write("A");
        };
        rig.add("a.wav", 1);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        QVERIFY(thereBefore.isEmpty()); // it has no name before it is compared
        QCOMPARE(rig.errors.size(), 1);
        QVERIFY2(rig.errors[0].contains("comes back changed"), qPrintable(rig.errors[0]));
        QCOMPARE(rig.content("a.wav"), "audio");
        // A copy of another length is left alone: somebody may have put it there.
        rig.copy.reset();
        CopyRig::write(rig.target + "/a.wav", "aud");
        rig.start();
        QTRY_COMPARE(rig.copied, QStringList({"a.wav", "a.2.wav"}));
        QCOMPARE(rig.content("a.wav"), "aud");
        QCOMPARE(rig.content("a.2.wav"), "audio");
        QVERIFY(rig.lines.last().startsWith("a.wav in the second copy has changed."));
    }

    void leavesOthersFilesAlone()
    {
        CopyRig rig;
        QVERIFY(QDir().mkpath(rig.target));
        CopyRig::write(rig.target + "/same.wav", "audio");
        CopyRig::write(rig.target + "/other.wav", "music"); // of the same length
        CopyRig::write(rig.target + "/longer.wav", "longer");
        CopyRig::write(rig.target + "/unknown.wav", "x");
        for (const char* name : {"same.wav", "other.wav", "longer.wav", "edited.wav"})
            rig.add(name, 1);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 4);
        rig.copied.sort();
        QCOMPARE(rig.copied, QStringList({"edited.wav", "longer.2.wav", "other.2.wav", "same.wav"}));
        CopyRig::write(rig.target + "/edited.wav", "audix");
        QCOMPARE(rig.content("other.wav"), "music");

        rig.nowMs += 400 * 86'400'000LL; // everything is old
        QSignalSpy deleted(rig.copy.get(), &ArchiveCopy::deleted);
        rig.copy->reload();
        QTRY_COMPARE(deleted.size(), 2);
        QTRY_COMPARE(rig.lines, QStringList("Deleted 2 old file(s) from the second copy"));
        QCOMPARE(rig.there(), QStringList({"edited.wav", "longer.wav", "other.wav", "same.wav", "unknown.wav"}));
        rig.start(); // what went from it is not copied again
        rig.add("new.wav", 0);
        QTRY_COMPARE(rig.copied.size(), 5);
    }

    void aNameThatComesBack()
    {
        CopyRig rig;
        rig.add("0001.wav", 100, "first");
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        rig.add("0001.wav", 1, "second");
        QTRY_COMPARE(rig.copied, QStringList({"0001.wav", "0001.2.wav"}));
        QCOMPARE(rig.content("0001.wav"), "first");
        QCOMPARE(rig.content("0001.2.wav"), "second");
    }

    /// A torn line, and names that lead out of the folder.
    void toleratesADamagedList()
    {
        CopyRig rig;
        rig.add("a.wav", 2);
        rig.start();
        QTRY_COMPARE(rig.copied.size(), 1);
        rig.copy.reset();
        const QString list = rig.target + "/.tidewell/copies-host..jsonl";
        CopyRig::write(rig.dir.filePath("precious"), "audio");
        QByteArray lines = "{'copy':'../precious','file':'x','startSecs':1,'bytes':5,'sha256':'" +
                           QCryptographicHash::hash("audio", QCryptographicHash::Sha256).toHex() +
                           "','ours':true}\n{'copy':'b.w";
        CopyRig::write(list, CopyRig::read(list) + lines.replace('\'', '"'));
        rig.start();
        rig.add("b.wav", 1);
        QTRY_COMPARE(rig.copied.size(), 2);
        rig.start();
        rig.add("c.wav", 1);
        QTRY_COMPARE(rig.copied, QStringList({"a.wav", "b.wav", "c.wav"})); // the line after the torn one was read
        QVERIFY(QFile::exists(rig.dir.filePath("precious")));
    }

    void doesNothingWhenOff()
    {
        CopyRig rig;
        AppSettings::instance().copyEnabled = false;
        rig.add("a.wav", 1);
        rig.start();
        rig.add("b.wav", 1);
        QTest::qWait(100);
        QVERIFY(!rig.copy->isEnabled());
        QCOMPARE(rig.copy->filesBehind(), 0);
        QCOMPARE(QDir(rig.dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("recordings"));
    }
};

QTEST_GUILESS_MAIN(TestArchiveCopy)
#include "tst_archivecopy.moc"
