#include "archive/archiveindex.h"
#include "archive/spacekeeper.h"
#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "station/diskspace.h"
#include "station/station.h"
#include "support/scriptedcapture.h"
#include "support/smalldisk_linux.h"
#include "support/table.h"

#include <QDir>
#include <QEventLoop>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr qint64 Day = 86'400'000;
const QDateTime Start(QDate(2026, 3, 1), QTime(0, 0)); // the month has a clock change in most of Europe

} // namespace

class TestSpaceKeeper : public QObject {
    Q_OBJECT

    using Reserves = Table<qint64, qint64, qint64>; // bytes per second, volume; reserve
    using Orders = Table<QList<int>, QString, qint64, QStringList, int>; // ages in days, held, free; deleted, errors

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("Quayside");
        QCoreApplication::setApplicationName("tst_spacekeeper");
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path());
    }
    void init()
    {
        m_settings.codec = Wav;
        m_settings.channels = 1;
        m_settings.sampleRate = 500; // a month of it passes through 200 MB thirteen times
        m_settings.splitMinutes = 60;
        m_settings.deleteWhenFull = true;
        m_settings.keepDays = 1;
    }

    void reserve_data()
    {
        const Reserves row;
        row("an hour of 48 kHz stereo", 192'000, 1'000'000'000'000, 691'200'000);
        row("MP3 64k: 50 MB are more", 8'000, 1'000'000'000'000, 50'000'000);
        row("small volume: a tenth", 8'000, 200'000'000, 20'000'000);
        row("tiny volume: two minutes all the same", 192'000, 100'000'000, 23'040'000);
        row("unknown volume", 192'000, -1, 691'200'000);
        row("no format", 0, -1, 50'000'000);
    }
    void reserve()
    {
        const auto [rate, volume, bytes] = Reserves::fetch();
        QCOMPARE(SpaceKeeper::reserve(rate, volume), bytes);
    }

    /// Files of 4 MB; the reserve is 50 MB. The index has them in the order of the row.
    void deletesTheOldest_data()
    {
        const Orders row;
        row("enough is free", {9, 8}, "", 50'000'000, {}, 0);
        row("as many as need be", {7, 9, 8}, "", 43'000'000, {"9.wav", "8.wav"}, 0);
        row("not what is younger", {1, 0, 5}, "", 40'000'000, {"5.wav"}, 1);
        row("not what is held", {9, 8}, "9.wav", 49'000'000, {"8.wav"}, 0);
        row("nothing", {1}, "", 0, {}, 1);
        row("unknown free space", {9, 8}, "", -1, {}, 0);
    }
    void deletesTheOldest()
    {
        const auto [ages, held, freeBytes, deleted, errors] = Orders::fetch();
        QTemporaryDir folder;
        ArchiveIndex index;
        index.setFolder(folder.path());
        for (const int age : ages) {
            const QString name = QString::number(age) + ".wav";
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(4'000'000));
            index.addRecord({name, file.fileName(), Start.addDays(-age).addSecs(60), 1000, 4'000'000, false});
        }
        index.addRecord({"open.wav", folder.filePath("open.wav"), Start.addDays(-99), 1000, 4'000'000, true});
        index.addRecord({"undated.wav", folder.filePath("undated.wav"), {}, 1000, 4'000'000, false});
        qint64 nowMs = Start.toMSecsSinceEpoch();
        SpaceKeeper keeper(&index, nullptr, [&nowMs] { return nowMs; });
        keeper.setHeld([held = held](const RecordInfo& record) { return record.fileName == held; });
        QStringList gone;
        connect(&keeper, &SpaceKeeper::deleted, this, [&](const QString& path) { gone << QFileInfo(path).fileName(); });
        QSignalSpy lines(&keeper, &SpaceKeeper::logMessage);
        QSignalSpy reds(&keeper, &SpaceKeeper::errorOccurred);
        const qint64 deletable = keeper.deletableBytes();

        keeper.onFreeSpace(freeBytes, 0);
        QTRY_COMPARE(gone, deleted);
        QTRY_COMPARE(lines.size(), deleted.isEmpty() ? 0 : 1);
        QTRY_COMPARE(reds.size(), errors);
        for (const QString& name : deleted)
            QVERIFY(!QFile::exists(folder.filePath(name)));
        QCOMPARE(keeper.deletableBytes(), deletable - 4'000'000 * deleted.size());
        // The disk may show the room only later; and the same shortage is told once per day.
        keeper.onFreeSpace(freeBytes, 0);
        QTest::qWait(20);
        QCOMPARE(gone, deleted);
        QCOMPARE(reds.size(), errors);
        nowMs += Day;
        keeper.onFreeSpace(0, 0);
        QTRY_COMPARE(reds.size(), freeBytes < 0 || !held.isEmpty() ? 1 : errors + 1);
    }

    /// A month through the real recorder, wired as the station does it. The free space is asked for half as often.
    void monthOnASmallDisk()
    {
        const SmallDisk disk("ext4", 200);
        if (!disk.mounted)
            QSKIP("This machine does not allow mounting a file system.");
        m_settings.outputFolder = disk.path + "/recordings";
        qint64 nowMs = Start.toMSecsSinceEpoch();
        ArchiveIndex index;
        index.setFolder(m_settings.outputFolder);
        Recorder recorder(&index, nullptr, {[&] { return nowMs; }, [] { return new ScriptedCapture; }});
        DiskSpace space;
        SpaceKeeper keeper(&index, nullptr, [&nowMs] { return nowMs; });
        connect(&space, &DiskSpace::changed, this, [&] { keeper.onFreeSpace(space.freeBytes(), space.totalBytes()); });
        connect(&recorder, &Recorder::fileStarted, this, [&] { space.ask(m_settings.outputFolder); });
        qint64 frames = 0;
        QStringList closed, deleted;
        connect(&recorder, &Recorder::fileFinished, this, [&](const RecordInfo& info) {
            QCOMPARE(info.bytes, QFileInfo(info.filePath).size());
            frames += (info.bytes - 44) / 2;
            closed << info.filePath;
        });
        qint64 youngestMs = Day * 99;
        connect(&keeper, &SpaceKeeper::deleted, this, [&](const QString& path) {
            const QDateTime start = ArchiveIndex::startFromFileName(QFileInfo(path).fileName(), {});
            youngestMs = std::min(youngestMs, nowMs - start.toMSecsSinceEpoch());
            deleted << path;
        });
        QSignalSpy errors(&recorder, &Recorder::errorOccurred);
        QSignalSpy reds(&keeper, &SpaceKeeper::errorOccurred);

        QEventLoop answer;
        connect(&space, &DiskSpace::changed, &answer, &QEventLoop::quit);
        QVERIFY(recorder.start());
        const QByteArray block(60 * 500 * 2, '\x11');
        constexpr int Blocks = 31 * 24 * 60;
        qint64 leastFree = DiskSpace::query(m_settings.outputFolder);
        for (int i = 0; i < Blocks && recorder.isRecording(); ++i) {
            nowMs += 60'000;
            recorder.onData(block);
            space.ask(m_settings.outputFolder);
            answer.exec();
            leastFree = std::min(leastFree, space.freeBytes());
        }
        recorder.stop();
        QVERIFY2(errors.isEmpty(), qPrintable(errors.value(0).value(0).toString()));
        QCOMPARE(frames, qint64(Blocks) * 60 * 500);
        QVERIFY(reds.isEmpty());
        QVERIFY(deleted.size() > 600);
        QCOMPARE(deleted, closed.mid(0, deleted.size())); // the oldest first
        QVERIFY2(youngestMs > Day, qPrintable(QString::number(youngestMs)));
        QCOMPARE(index.records().size(), closed.size() - deleted.size());
        qInfo("%lld files, %lld deleted, least free %lld bytes", qint64(closed.size()), qint64(deleted.size()),
              leastFree);
    }

    /// By the station, with its own wiring and the journal.
    void stationDeletes_data()
    {
        const Table<bool> row;
        row("switched on", true);
        row("off by default", false);
    }
    void stationDeletes()
    {
        const auto [on] = Table<bool>::fetch();
        const SmallDisk disk("tmpfs", 30);
        if (!disk.mounted)
            QSKIP("This machine does not allow mounting a file system.");
        m_settings.outputFolder = disk.path;
        m_settings.deleteWhenFull = on;
        m_settings.housekeepingEnabled = m_settings.autoMode = m_settings.checkAtStartup = false;
        const QString path = disk.path + "/20010101-000000.wav";
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(28'900'000, 'x')) == 28'900'000);
        file.close();
        Station station;
        QSignalSpy lines(&station, &Station::lineLogged);
        QSignalSpy asked(station.diskSpace(), &DiskSpace::changed);
        station.begin();
        QTRY_VERIFY(!asked.isEmpty());
        if (!on) {
            QTest::qWait(50);
            QVERIFY(QFile::exists(path));
            return;
        }
        const auto said = [&] {
            return std::any_of(lines.begin(), lines.end(), [](const QVariantList& line) {
                return line[0].toString() == "Deleted 1 recording(s), the oldest first, since the disk was full";
            });
        };
        QTRY_VERIFY(said());
        QVERIFY(!QFile::exists(path));
        QTRY_VERIFY(station.diskSpace()->freeBytes() > 25'000'000); // asked anew
        const auto inJournal = [] {
            for (const QString& name : QDir(Station::journalFolder()).entryList({"*.jsonl"})) {
                QFile journal(Station::journalFolder() + u'/' + name);
                if (journal.open(QIODevice::ReadOnly) && journal.readAll().contains(R"("reason":"space")"))
                    return true;
            }
            return false;
        };
        QTRY_VERIFY(inJournal());
    }

private:
    QTemporaryDir m_store;
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestSpaceKeeper)
#include "tst_spacekeeper_linux.moc"
