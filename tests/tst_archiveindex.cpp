#include "archive/archiveindex.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

namespace {

constexpr int SavedFiles = 2000; // enough for a save to take a while

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

RecordInfo record(const QString& name, const QDateTime& start, qint64 durationMs)
{
    return {name, "/archive/" + name, start, durationMs, 1000, false};
}

QStringList namesOf(const ArchiveIndex& index)
{
    QStringList names;
    for (const RecordInfo& info : index.records())
        names << info.fileName;
    return names;
}

QDateTime at(int hour, int minute = 0)
{
    return QDateTime(QDate(2024, 1, 31), QTime(hour, minute));
}

/// What the killed child does: the list grows and shrinks by one for ever, and each change is saved.
int saveForEver(const QString& folder)
{
    ArchiveIndex index;
    index.setFolder(folder);
    const RecordInfo extra = record("extra.wav", at(12), 1);
    for (;;) {
        index.addRecord(extra);
        index.removeRecord(extra.filePath);
    }
}

} // namespace

class TestArchiveIndex : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startFromFileName_data();
    void startFromFileName();
    void scanListsAudioFiles();
    void knownFileKeepsStartAndLength();
    void damagedIndexLosesNoFile_data();
    void damagedIndexLosesNoFile();
    void skippedHourStaysInPlace();
    void saveWritesAllButFilesInProgress();
    void addReplacesInPlace();
    void removeTakesTheFirst();
    void signalsAndFolders();
    void recordAt_data();
    void recordAt();
    void killedWhileSaving();
};

void TestArchiveIndex::startFromFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QDateTime>("start"); // invalid: the fallback
    const QDateTime expected(QDate(2024, 1, 31), QTime(23, 59, 59));
    QTest::newRow("dash") << "20240131-235959.mp3" << expected;
    QTest::newRow("no separator, inside a name") << "studio_20240131235959_b.wav" << expected;
    QTest::newRow("non-ASCII separator") << QString::fromUtf8("20240131\xe2\x80\x93"
                                                              "235959.mp3")
                                         << expected;
    QTest::newRow("two separators") << "20240131_-235959.mp3" << QDateTime();
    QTest::newRow("month 13") << "20241301_120000.mp3" << QDateTime();
    QTest::newRow("hour 24") << "20240131_240000.mp3" << QDateTime();
    QTest::newRow("first match wins though invalid") << "20241301_120000 20240131_235959.mp3" << QDateTime();
    QTest::newRow("digits of another script") << QString(14, QChar(0x0661)) << QDateTime();
}

void TestArchiveIndex::startFromFileName()
{
    QFETCH(QString, name);
    QFETCH(QDateTime, start);
    const QDateTime fallback(QDate(2000, 2, 3), QTime(4, 5, 6, 7));
    QCOMPARE(ArchiveIndex::startFromFileName(name, fallback), start.isValid() ? start : fallback);
}

void TestArchiveIndex::scanListsAudioFiles()
{
    const QTemporaryDir dir;
    const QByteArray wav = QByteArray::fromHex("52494646ffffffff57415645666d7420100000000100020080bb000000ee0200"
                                               "0400100064617461ffffffff");
    write(dir.filePath("x_20240131_235959.wav"), wav + QByteArray(19200, '\0'));
    write(dir.filePath("20240131-120000.MP3"), {});
    write(dir.filePath("20240131-110000.flac"), {});
    write(dir.filePath("20240131-100000.ogg"), {});
    write(dir.filePath("20240131-090000.m4a"), {});
    write(dir.filePath("undated.wav"), {});
    write(dir.filePath("notes.txt"), {});
    write(dir.filePath("20240131-080000.mp3.part"), {});
    QVERIFY(QDir(dir.path()).mkpath("sub.wav"));
    write(dir.filePath("sub.wav/20240131-070000.wav"), {});

    ArchiveIndex index;
    index.setFolder(dir.path());
    QCOMPARE(namesOf(index), QStringList({"20240131-090000.m4a", "20240131-100000.ogg", "20240131-110000.flac",
                                          "20240131-120000.MP3", "x_20240131_235959.wav", "undated.wav"}));
    const RecordInfo dated = index.records().at(4);
    QCOMPARE(dated.start, QDateTime(QDate(2024, 1, 31), QTime(23, 59, 59)));
    QCOMPARE(dated.durationMs, 100);
    QCOMPARE(dated.bytes, 19244);
    QCOMPARE(dated.filePath, QFileInfo(dir.filePath("x_20240131_235959.wav")).absoluteFilePath());
    QVERIFY(qAbs(index.records().at(5).start.secsTo(QDateTime::currentDateTime())) < 60);
    QVERIFY(!QFile::exists(dir.filePath("records.json")));
}

void TestArchiveIndex::knownFileKeepsStartAndLength()
{
    const QTemporaryDir dir;
    write(dir.filePath("20240131-120000.mp3"), "12345");
    write(dir.filePath("b.mp3"), {});
    // The first of one name counts; a name in another case is another file.
    write(dir.filePath("records.json"), R"({"records":[
        {"file":"20240131-120000.mp3","start":"2024-01-31T09:00:00","durationMs":7000,"bytes":1},
        {"file":"20240131-120000.mp3","start":"2024-01-31T10:00:00","durationMs":8000,"bytes":2},
        {"file":"b.mp3","start":"no date","durationMs":1e300},
        {"file":"B.mp3","start":"2024-01-31T07:00:00","durationMs":1}]})");
    ArchiveIndex index;
    index.setFolder(dir.path());
    QCOMPARE(namesOf(index), QStringList({"20240131-120000.mp3", "b.mp3"}));
    QCOMPARE(index.records().at(0).start, at(9));
    QCOMPARE(index.records().at(0).durationMs, 7000);
    QCOMPARE(index.records().at(0).bytes, 5);
    QVERIFY(index.records().at(1).start.isValid());
    QCOMPARE(index.records().at(1).durationMs, std::numeric_limits<qint64>::max());

    index.save();
    QVERIFY(contents(dir.filePath("records.json")).startsWith("[{"));
}

void TestArchiveIndex::damagedIndexLosesNoFile_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut short") << QByteArray(R"([{"file":"20240131-100000.wav","start":"2024-0)");
    QTest::newRow("number") << QByteArray("1e300");
    QTest::newRow("string") << QByteArray(R"("records")");
    QTest::newRow("object without records") << QByteArray(R"({"file":[]})");
    QTest::newRow("records is no array") << QByteArray(R"({"records":{"file":"20240131-100000.wav"}})");
    QTest::newRow("elements are no objects") << QByteArray(R"([1,null,"x",[{}],{}])");
    QTest::newRow("wrong types") << QByteArray(
        R"([{"file":"20240131-100000.wav","start":20240131,"durationMs":"7","bytes":[]},{"file":7}])");
    QTest::newRow("absurd numbers") << QByteArray(
        R"([{"file":"20240131-100000.wav","start":"2024-01-31T10:00:00","durationMs":-1e300,"bytes":1e300}])");
    QTest::newRow("paths") << QByteArray(
        R"([{"file":"../20240131-100000.wav"},{"file":"/x.wav"},{"file":"a\\b.wav"}])");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0]\0", 6);
    QTest::newRow("not UTF-8") << QByteArray("[{\"file\":\"\xe4\xff.wav\"}]");
    QTest::newRow("nested a million deep") << QByteArray(1000000, '[');
}

void TestArchiveIndex::damagedIndexLosesNoFile()
{
    QFETCH(QByteArray, json);
    const QTemporaryDir dir;
    write(dir.filePath("20240131-110000.wav"), {});
    write(dir.filePath("20240131-100000.wav"), {});
    write(dir.filePath("records.json"), json);
    ArchiveIndex index;
    index.setFolder(dir.path());
    QCOMPARE(namesOf(index), QStringList({"20240131-100000.wav", "20240131-110000.wav"}));
    QCOMPARE(index.records().at(0).start, at(10));
    QCOMPARE(index.records().at(0).durationMs, 0);
    QCOMPARE(index.records().at(0).bytes, 0);
}

void TestArchiveIndex::skippedHourStaysInPlace()
{
    // In the zone that main() sets, no clock showed half past two in that night; elsewhere it is a time like any other.
    const QTemporaryDir dir;
    const QStringList names = {"20240331-003000.wav", "20240331-023000.wav", "20240331-043000.wav"};
    for (const QString& name : names)
        write(dir.filePath(name), {});
    ArchiveIndex index;
    index.setFolder(dir.path());
    QCOMPARE(namesOf(index), names);
    QVERIFY(index.records().at(1).start.isValid());
}

void TestArchiveIndex::saveWritesAllButFilesInProgress()
{
    const QTemporaryDir dir;
    const QString folder = dir.filePath("not/yet");
    ArchiveIndex index;
    index.setFolder(folder);
    RecordInfo running = record("running.wav", at(1), 1);
    running.inProgress = true;
    index.addRecord(running);
    QCOMPARE(contents(folder + "/records.json"), QByteArray("[]"));
    const QString odd = QString::fromUtf8("\"\\\t\xc3\xa4\xf0\x9f\x8e\x99.wav");
    index.addRecord(record(odd, QDateTime(QDate(987, 6, 5), QTime(4, 3, 2)), -1));
    index.addRecord(record("\"utc\".wav", at(15).toUTC(), 3600000LL * 9999));
    index.addRecord(record("unknown.wav", {}, 0));

    const QByteArray json = contents(folder + "/records.json");
    QVERIFY(!json.contains('\n') && !json.contains(' '));
    const QJsonArray expected = {
        QJsonObject{{"file", odd}, {"start", "0987-06-05T04:03:02"}, {"durationMs", -1}, {"bytes", 1000}},
        QJsonObject{
            {"file", "\"utc\".wav"}, {"start", "2024-01-31T15:00:00"}, {"durationMs", 35996400000LL}, {"bytes", 1000}},
        QJsonObject{{"file", "unknown.wav"}, {"start", ""}, {"durationMs", 0}, {"bytes", 1000}}};
    QCOMPARE(QJsonDocument::fromJson(json).array(), expected);
}

void TestArchiveIndex::addReplacesInPlace()
{
    const QTemporaryDir dir;
    ArchiveIndex index;
    index.setFolder(dir.path());
    for (const char* name : {"b.wav", "a.wav", "B.wav"})
        index.addRecord(record(name, at(1), 1000));
    index.addRecord(record("b.wav", at(23), 2000));
    QCOMPARE(namesOf(index), QStringList({"b.wav", "a.wav", "B.wav"}));
    QCOMPARE(index.records().at(0).start, at(23));
    QCOMPARE(index.recordAt(at(23)).fileName, "b.wav");
}

void TestArchiveIndex::removeTakesTheFirst()
{
    const QTemporaryDir dir;
    ArchiveIndex index;
    index.setFolder(dir.path());
    RecordInfo info = record("a.wav", at(1), 1000);
    index.addRecord(info);
    info.fileName = "other name, same path.wav";
    index.addRecord(info);
    index.removeRecord(info.filePath);
    QCOMPARE(namesOf(index), QStringList({"other name, same path.wav"}));
    QCOMPARE(QJsonDocument::fromJson(contents(dir.filePath("records.json"))).array().size(), 1);
}

void TestArchiveIndex::signalsAndFolders()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath("20240131-100000.wav");
    write(file, {});
    ArchiveIndex index;
    QSignalSpy changed(&index, &ArchiveIndex::changed);
    index.setFolder({}); // there is none yet
    index.rescan();
    QCOMPARE(changed.size(), 0);
    index.setFolder(dir.path());
    QCOMPARE(changed.size(), 1);
    index.setFolder(dir.path());
    QCOMPARE(changed.size(), 1);
    index.save();
    QCOMPARE(changed.size(), 1);

    // A file deleted behind our back: the scan drops it and does not save, the next change does.
    QVERIFY(QFile::remove(file));
    index.rescan();
    QCOMPARE(changed.size(), 2);
    QVERIFY(index.records().isEmpty());
    QVERIFY(contents(dir.filePath("records.json")).contains("20240131-100000.wav"));
    index.removeRecord("/no/such/file.wav");
    QCOMPARE(changed.size(), 3);
    QCOMPARE(contents(dir.filePath("records.json")), QByteArray("[]"));

    index.addRecord(record("a.wav", at(1), 1000));
    QCOMPARE(changed.size(), 4);
    index.setFolder(dir.filePath("no such folder"));
    QCOMPARE(changed.size(), 5);
    QVERIFY(index.records().isEmpty());
    QVERIFY(!QFile::exists(dir.filePath("no such folder")));
}

void TestArchiveIndex::recordAt_data()
{
    QTest::addColumn<QList<RecordInfo>>("records");
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QString>("name");
    const qint64 hour = 3600000;
    const RecordInfo nine = record("nine", at(9), hour), ten = record("ten", at(10), hour);
    const RecordInfo open = record("open", at(12), 0), unknown = record("unknown", {}, hour);
    const RecordInfo endless = record("endless", at(11), std::numeric_limits<qint64>::max());
    using Records = QList<RecordInfo>;
    QTest::newRow("invalid moment") << Records{nine, open} << QDateTime() << "";
    QTest::newRow("no records") << Records{} << at(9) << "";
    QTest::newRow("start is inside") << Records{nine, ten} << at(9) << "nine";
    QTest::newRow("end is the next one's") << Records{nine, ten} << at(10) << "ten";
    QTest::newRow("end of the last") << Records{nine, ten} << at(11) << "";
    QTest::newRow("added out of order") << Records{ten, nine} << at(9, 59) << "nine";
    QTest::newRow("the earlier of two, whatever their order")
        << Records{record("late", at(9, 30), hour), nine} << at(9, 45) << "nine";
    QTest::newRow("gap before the open one") << Records{nine, open} << at(11) << "";
    QTest::newRow("newest is open, not listed last") << Records{open, nine, unknown} << at(23) << "open";
    QTest::newRow("open but not the newest") << Records{open, record("two", at(14), hour)} << at(13) << "";
    QTest::newRow("open one ends now") << Records{open} << QDateTime::currentDateTime().addDays(1) << "";
    QTest::newRow("unknown start covers nothing") << Records{unknown} << at(9) << "";
    QTest::newRow("end past the end of time") << Records{endless} << at(13) << "endless";
}

void TestArchiveIndex::recordAt()
{
    QFETCH(QList<RecordInfo>, records);
    QFETCH(QDateTime, moment);
    ArchiveIndex index; // without a folder, nothing is saved
    for (const RecordInfo& info : records)
        index.addRecord(info);
    QTEST(index.recordAt(moment).fileName, "name");
    QTEST(index.recordAt(moment.toUTC()).fileName, "name");
}

void TestArchiveIndex::killedWhileSaving()
{
    const QTemporaryDir dir;
    for (int i = 0; i < SavedFiles; ++i)
        write(dir.filePath(at(0).addSecs(i).toString("yyyyMMdd-hhmmss") + ".wav"), {});
    const QString json = dir.filePath("records.json");
    for (int round = 0; round < 20; ++round) {
        QFile::remove(json);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {"--save-for-ever", dir.path()});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(json), 10000);
        QTest::qWait(QRandomGenerator::global()->bounded(30));
        child.kill();
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);

        const QJsonDocument saved = QJsonDocument::fromJson(contents(json));
        QVERIFY(saved.isArray());
        const qsizetype size = saved.array().size();
        QVERIFY2(size == SavedFiles || size == SavedFiles + 1, QByteArray::number(size));
    }
    ArchiveIndex index;
    index.setFolder(dir.path());
    QCOMPARE(index.records().size(), SavedFiles); // and nothing that the killed saves left behind
}

int main(int argc, char* argv[])
{
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // a zone with clock changes, on every machine that heeds it
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == "--save-for-ever")
        return saveForEver(app.arguments().value(2));
    TestArchiveIndex test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_archiveindex.moc"
