#include "archive/durationprobe.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// The canonical 44 bytes of 16-bit stereo with this byte rate.
QByteArray wavHeader(const char* byteRate = "00ee0200") // 192,000, as it stands in the file
{
    return QByteArray::fromHex("52494646ffffffff57415645666d7420100000000100020080bb0000") +
           QByteArray::fromHex(byteRate) + QByteArray::fromHex("0400100064617461ffffffff");
}

/// An ID3 tag that ends `size` bytes after its header.
QByteArray id3(const char* syncsafeSize, qsizetype size)
{
    return "ID3" + QByteArray::fromHex("040000") + QByteArray::fromHex(syncsafeSize) + QByteArray(size, '\0');
}

const QByteArray Mpeg1At128 = QByteArray::fromHex("fffb9064");
const QByteArray Mpeg2At64 = QByteArray::fromHex("fff38064");

} // namespace

class TestDurationProbe : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lengthOfFile_data();
    void lengthOfFile();
    void missingFile();
};

void TestDurationProbe::lengthOfFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<qint64>("size"); // of the whole file, zeros after the head
    QTest::addColumn<qint64>("durationMs");

    const QString wav = "a.wav", mp3 = "a.mp3";
    const QByteArray header = wavHeader();
    QTest::newRow("one second") << wav << header << 192044LL << 1000LL;
    QTest::newRow("upper-case ending") << "A.WAV" << header << 192044LL << 1000LL;
    QTest::newRow("header only") << wav << header << 44LL << 0LL;
    QTest::newRow("truncated, not rounded") << wav << header << 44LL + 383 << 1LL;
    QTest::newRow("too long for 32-bit arithmetic") << wav << header << 44LL + 192000LL * 300 << 300000LL;
    QTest::newRow("byte rate is unsigned") << wav << wavHeader("00000080") << 44LL + (1LL << 24) << 7LL;
    QTest::newRow("byte rate 0") << wav << wavHeader("00000000") << 192044LL << 0LL;
    QTest::newRow("40 bytes") << wav << header.left(40) << 40LL << 0LL;
    QTest::newRow("RIFX") << wav << QByteArray(header).replace("RIFF", "RIFX") << 192044LL << 0LL;
    QTest::newRow("no format chunk") << wav << QByteArray(header).replace("fmt ", "junk") << 192044LL << 0LL;
    const QByteArray riff = header.left(12);
    const QByteArray chunk = header.mid(12, 24);
    QTest::newRow("format chunk moved, still 44") << wav << riff + QByteArray(32, 'x') + chunk << 192044LL << 1000LL;
    QTest::newRow("byte rate just outside") << wav << riff + QByteArray(33, 'x') + chunk << 192044LL << 0LL;

    QTest::newRow("128 kbit/s") << mp3 << Mpeg1At128 << 1000000LL << 62000LL;
    QTest::newRow("MPEG-2") << mp3 << Mpeg2At64 << 80000LL << 10000LL;
    QTest::newRow("MPEG-2.5") << mp3 << QByteArray::fromHex("ffe38064") << 80000LL << 10000LL;
    QTest::newRow("layer II is passed over")
        << mp3 << QByteArray::fromHex("fffd9064") + Mpeg2At64 << 80000LL << 10000LL;
    QTest::newRow("free format and index 15 are passed over")
        << mp3 << QByteArray::fromHex("fffb0064fffbf064") + Mpeg2At64 << 80000LL << 10000LL;
    QTest::newRow("junk before the frame counts as audio") << mp3 << "junk" + Mpeg1At128 << 160000LL << 10000LL;
    QTest::newRow("tag, its size in seven-bit bytes")
        << mp3 << id3("00000100", 128) + Mpeg1At128 << 160138LL << 10000LL;
    QTest::newRow("high bits of the tag size do not count")
        << mp3 << id3("80808180", 128) + Mpeg1At128 << 160138LL << 10000LL;
    QTest::newRow("tag beyond the end") << mp3 << id3("7f7f7f7f", 0) + Mpeg1At128 << 160000LL << 0LL;
    QTest::newRow("last place for a frame header")
        << mp3 << QByteArray(8192 - 4, '\0') + Mpeg1At128 << 160000LL << 10000LL;
    QTest::newRow("one place too far") << mp3 << QByteArray(8192 - 3, '\0') + Mpeg1At128 << 160000LL << 0LL;
    QTest::newRow("three bytes") << mp3 << Mpeg1At128.left(3) << 3LL << 0LL;
    QTest::newRow("another format") << "a.flac" << header << 192044LL << 0LL;
}

void TestDurationProbe::lengthOfFile()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, head);
    QFETCH(qint64, size);
    const QTemporaryDir dir;
    QFile file(dir.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(head), head.size());
    QVERIFY(file.resize(size));
    file.close();
    QTEST(probeDurationMs(file.fileName()), "durationMs");
}

void TestDurationProbe::missingFile()
{
    QCOMPARE(probeDurationMs("/no such folder/a.wav"), 0);
}

QTEST_GUILESS_MAIN(TestDurationProbe)
#include "tst_durationprobe.moc"
