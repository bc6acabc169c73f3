#include "archive/archiveindex.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

namespace {

constexpr qint64 Hour = 3600000;
constexpr qint64 Longest = std::numeric_limits<qint64>::max();

QDateTime at(int hour, int minute = 0)
{
    return QDateTime(QDate(2024, 1, 31), QTime(hour, minute));
}

RecordInfo record(const QString& name, const QDateTime& start, qint64 durationMs = Hour)
{
    return {name, "/archive/" + name, start, durationMs, 1000, false};
}

struct Archive {
    QTemporaryDir dir;
    ArchiveIndex index;

    QString path(const QString& name) const { return dir.filePath(name); }
    void write(const QString& name, const QByteArray& bytes = {}) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QStringList names() const
    {
        QStringList names;
        for (const RecordInfo& info : index.records())
            names << info.fileName;
        return names;
    }
    QJsonDocument saved(const QString& name = "records.json") const
    {
        QFile file(path(name));
        return QJsonDocument::fromJson(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
};

} // namespace

class TestArchiveIndex : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startFromFileName()
    {
        const QDateTime fallback(QDate(2000, 2, 3), QTime(4, 5, 6, 7));
        const auto start = [&](const char* name) { return ArchiveIndex::startFromFileName(name, fallback); };
        QCOMPARE(start("studio_20240131235900_b.wav"), at(23, 59));
        QCOMPARE(start("20240131_-235959.mp3"), fallback);
        QCOMPARE(start("20240131_240000.mp3"), fallback);
        QCOMPARE(start("20241301_120000 20240131_235959.mp3"), fallback); // the first match counts, though invalid
        // In the zone that main() sets, no clock showed half past two in that night; elsewhere it is a time like any
        // other.
        QCOMPARE(start("20240331-023000.wav"), QDateTime(QDate(2024, 3, 31), QTime(1, 0)).addSecs(5400));
    }

    void scan()
    {
        Archive archive;
        archive.write("x_20240131_230000.mp3", QByteArray::fromHex("fffb9064").leftJustified(16000, '\0'));
        archive.write("20240131-120000.MP3", "12345");
        for (const char* name : {"20240131-100000.ogg", "20240131-110000.flac", "20240131-130000.m4a", "undated.wav",
                                 "notes.txt", "20240131-080000.mp3.part"})
            archive.write(name);
        QVERIFY(QDir(archive.path("")).mkpath("sub.wav"));
        // The first of one name counts; a name in another case is another file; a lost start leaves the length; what is
        // of the wrong type or out of range does no harm.
        // Not a raw text: this Qt's moc loses its way in those of several lines.
        QByteArray json = "{'records':[1,null,'x',[{}],{'file':7},"
                          "{'file':'20240131-120000.MP3','start':'2024-01-31T09:00:00','durationMs':7000,'bytes':1},"
                          "{'file':'20240131-120000.MP3','start':'2024-01-31T11:00:00','durationMs':8000,'bytes':2},"
                          "{'file':'20240131-100000.OGG','start':'2024-01-31T07:00:00','durationMs':1},"
                          "{'file':'20240131-110000.flac','start':'no date','durationMs':1e300},"
                          "{'file':'20240131-130000.m4a','start':20240131,'durationMs':'7'},"
                          "{'file':'undated.wav','durationMs':-1e300}]}";
        archive.write("records.json", json.replace('\'', '"'));
        archive.index.setFolder(archive.dir.path());
        QCOMPARE(archive.names(), QStringList({"20240131-120000.MP3", "20240131-100000.ogg", "20240131-110000.flac",
                                               "20240131-130000.m4a", "x_20240131_230000.mp3", "undated.wav"}));
        const QList<RecordInfo> records = archive.index.records();
        QCOMPARE(records[0].start, at(9));
        QCOMPARE(records[0].durationMs, 7000);
        QCOMPARE(records[0].bytes, 5);
        QCOMPARE(records[2].durationMs, Longest);
        QCOMPARE(records[3].durationMs, 0);
        QCOMPARE(records[4].start, at(23));
        QCOMPARE(records[4].durationMs, 1000);
        QCOMPARE(records[4].filePath, QFileInfo(archive.path("x_20240131_230000.mp3")).absoluteFilePath());
        QCOMPARE(records[5].durationMs, 0);
        QVERIFY(qAbs(records[5].start.secsTo(QDateTime::currentDateTime())) < 60);
    }

    void damagedIndexLosesNoFile()
    {
        Archive archive;
        archive.write("20240131-100000.wav");
        for (const char* const json :
             {"[{\"file\":\"20240131-100000.wav\",\"start\":\"2024-0", R"({"records":{"file":"x.wav"}})"}) {
            archive.write("records.json", json);
            archive.index.setFolder(archive.dir.path());
            QCOMPARE(archive.names(), QStringList("20240131-100000.wav"));
            archive.index.setFolder({});
        }
    }

    void savedText()
    {
        Archive archive;
        archive.index.setFolder(archive.path("not/yet"));
        const QString oddName = QString::fromUtf8("\"\\\t\xc3\xa4\xf0\x9f\x8e\x99.wav");
        const QDateTime early(QDate(987, 6, 5), QTime(4, 3, 2));
        archive.index.addRecord(record(oddName, early, -1));
        archive.index.addRecord(record("utc.wav", at(15).toUTC(), Hour * 9999));
        archive.index.addRecord(record("unknown.wav", {}, 0));
        archive.index.addRecord({"running.wav", "/archive/running.wav", at(1), 1, 1, true});
        const auto entry = [](const QString& name, const QString& start, qint64 durationMs) {
            return QJsonObject{{"file", name}, {"start", start}, {"durationMs", durationMs}, {"bytes", 1000}};
        };
        QCOMPARE(archive.saved("not/yet/records.json"),
                 QJsonDocument(QJsonArray{entry(oddName, "0987-06-05T04:03:02", -1),
                                          entry("utc.wav", "2024-01-31T15:00:00", Hour * 9999),
                                          entry("unknown.wav", "", 0)}));
    }

    void changes()
    {
        Archive archive;
        archive.write("20240131-100000.wav");
        ArchiveIndex& index = archive.index;
        QSignalSpy changed(&index, &ArchiveIndex::changed);
        index.rescan(); // there is no folder yet
        index.setFolder(archive.dir.path());
        index.setFolder(archive.dir.path());
        index.save();
        QCOMPARE(changed.size(), 1);

        // A file deleted behind our back: the scan drops it, the next change saves that.
        QVERIFY(QFile::remove(archive.path("20240131-100000.wav")));
        index.rescan();
        QCOMPARE(changed.size(), 2);
        QCOMPARE(archive.saved().array().size(), 1);
        index.removeRecord("/no/such/file.wav");
        QCOMPARE(archive.saved(), QJsonDocument(QJsonArray()));

        for (const RecordInfo& info : {record("b", at(1)), record("a", at(1)), record("B", at(1)), record("b", at(22))})
            index.addRecord(info);
        QCOMPARE(archive.names(), QStringList({"b", "a", "B"}));
        QCOMPARE(index.recordAt(at(22)).fileName, "b");
        index.addRecord({"c", "/archive/b", at(2), Hour, 0, false});
        index.removeRecord("/archive/b");
        QCOMPARE(archive.names(), QStringList({"a", "B", "c"}));
        QCOMPARE(archive.saved().array().size(), 3);
        QCOMPARE(changed.size(), 9);

        index.setFolder(archive.path("no such folder"));
        QCOMPARE(changed.size(), 10);
        QCOMPARE(archive.names(), QStringList());
    }

    void recordAt()
    {
        const RecordInfo nine = record("nine", at(9)), ten = record("ten", at(10)), late = record("late", at(9, 30));
        const RecordInfo open = record("open", at(12), 0), unknown = record("unknown", {}, 0);
        const auto nameAt = [](const QList<RecordInfo>& records, const QDateTime& moment) {
            ArchiveIndex index; // without a folder, nothing is saved
            for (const RecordInfo& info : records)
                index.addRecord(info);
            return index.recordAt(moment).fileName;
        };
        QCOMPARE(nameAt({nine, open}, QDateTime()), "");
        QCOMPARE(nameAt({nine, ten}, at(10)), "ten");
        QCOMPARE(nameAt({late, nine}, at(9, 45)), "nine"); // the earlier of two
        QCOMPARE(nameAt({nine, open}, at(11)), "");
        QCOMPARE(nameAt({open, nine, unknown}, at(23)), "open");
        QCOMPARE(nameAt({open, record("newer", at(14))}, at(13)), "");
        QCOMPARE(nameAt({open}, QDateTime::currentDateTime().addDays(1)), ""); // it ends now
        QCOMPARE(nameAt({unknown}, at(9)), "");
        QCOMPARE(nameAt({record("endless", at(11), Longest)}, at(13)), "endless");
    }
};

int main(int argc, char* argv[])
{
#ifndef Q_OS_WIN // there it would shift the local time, but not that of files
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // a zone with clock changes, on every machine that heeds it
#endif
    QCoreApplication app(argc, argv);
    TestArchiveIndex test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_archiveindex.moc"
