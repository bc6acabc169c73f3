#include "archive/durationprobe.h"
#include "support/table.h"

#include <QFile>
#include <QTemporaryDir>

class TestDurationProbe : public QObject {
    Q_OBJECT

    using LengthOfFileRows =
        Table<QString, QByteArray, qint64, qint64>; // size: of the whole file, zeros after the head

private Q_SLOTS:
    void lengthOfFile_data()
    {
        const LengthOfFileRows row;
        const auto hex = QByteArray::fromHex;
        const char* const wav = "a.WAV";
        const char* const mp3 = "a.mp3";
        const QByteArray riff = hex("52494646ffffffff57415645");
        const QByteArray chunk = hex("666d7420100000000100020080bb000000ee020004001000"); // 192,000 bytes per second
        const QByteArray header = riff + chunk + hex("64617461ffffffff");
        row("truncated, not rounded", wav, header, 44 + 383, 1);
        row("too long for 32-bit arithmetic", wav, header, 44 + 192000LL * 300, 300000);
        row("byte rate is unsigned", wav, QByteArray(header).replace(28, 4, hex("00000080")), 44 + (1LL << 24), 7);
        row("byte rate 0", wav, QByteArray(header).replace(28, 4, hex("00000000")), 192044, 0);
        row("40 bytes", wav, QByteArray(header).replace(28, 4, hex("01000000")).left(40), 40, 0);
        row("RIFX", wav, QByteArray(header).replace("RIFF", "RIFX"), 192044, 0);
        row("no format chunk", wav, QByteArray(header).replace("fmt ", "junk"), 192044, 0);
        row("format chunk moved, still 44", wav, riff + QByteArray(32, 'x') + chunk, 192044, 1000);
        row("byte rate just outside", wav, riff + QByteArray(33, 'x') + chunk, 192044, 0);

        const QByteArray mpeg1 = hex("fffb9064"), mpeg2 = hex("fff38064"); // 128 and 64 kbit/s
        row("whole seconds", mp3, mpeg1, 1000000, 62000);
        row("MPEG-2.5", mp3, hex("ffe38064"), 80000, 10000);
        row("layer II, free format, index 15 are passed over", mp3, hex("fffd9064fffb0064fffbf064") + mpeg2, 80000,
            10000);
        row("tag, size in seven-bit bytes", mp3, hex("49443304000080808180") + QByteArray(128, ' ') + mpeg1, 160138,
            10000);
        row("tag beyond the end", mp3, hex("4944330400007f7f7f7f") + mpeg1, 160000, 0);
        row("last place for a frame header", mp3, QByteArray(8192 - 4, 'x') + mpeg1, 160000, 10000);
        row("one place too far", mp3, QByteArray(8192 - 3, 'x') + mpeg1, 160000, 0);
        row("another format", "a.flac", header, 192044, 0);
    }
    void lengthOfFile()
    {
        const auto [name, head, size, durationMs] = LengthOfFileRows::fetch();
        const QTemporaryDir dir;
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(head) == head.size() && file.resize(size));
        file.close();
        QCOMPARE(probeDurationMs(file.fileName()), durationMs);
        QVERIFY(file.remove());
        QCOMPARE(probeDurationMs(file.fileName()), 0);
    }
};

QTEST_GUILESS_MAIN(TestDurationProbe)
#include "tst_durationprobe.moc"
