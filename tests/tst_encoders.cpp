#include "encode/encoderfactory.h"
#include "encode/ffmpegencoder.h"
#include "encode/wavencoder.h"
#include "settings/appsettings.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/table.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QTemporaryDir>

class TestEncoders : public QObject {
    Q_OBJECT

    using FilesAreWhatTheyClaimRows = Table<int, int, int, QString, QString>;
    using SizeEstimateRows = Table<int, int, int, qint64>;

private Q_SLOTS:
    void wavIsByteForByte()
    {
        const QString first = m_folder.filePath("first.wav");
        const QString second = m_folder.filePath("second.wav");
        const QByteArray block = Counting::frames(0, 1000);
        WavEncoder encoder;
        QVERIFY(!encoder.write(block));
        QVERIFY(encoder.open(first, {48000, 2}));
        QVERIFY(encoder.write(block));
        QVERIFY2(content(first).mid(44) == block, "on the disk before it is closed");
        QVERIFY(encoder.write(block.left(3))); // a source may end inside a frame
        QCOMPARE(encoder.bytesWritten(), 4003);
        QVERIFY(encoder.open(second, {8000, 1}));
        encoder.close();
        encoder.close();

        QCOMPARE(content(first).left(44).toHex(' '),
                 QByteArray("52 49 46 46 c7 0f 00 00 57 41 56 45 66 6d 74 20 10 00 00 00 01 00 02 00 80 bb 00 00 "
                            "00 ee 02 00 04 00 10 00 64 61 74 61 a3 0f 00 00"));
        QVERIFY(content(first).mid(44) == block + block.left(3));
        QCOMPARE(content(second).toHex(' '),
                 QByteArray("52 49 46 46 24 00 00 00 57 41 56 45 66 6d 74 20 10 00 00 00 01 00 01 00 40 1f 00 00 "
                            "80 3e 00 00 02 00 10 00 64 61 74 61 00 00 00 00"));
        QVERIFY(!encoder.open(m_folder.filePath("no/such/folder.wav"), {8000, 1}));
        QVERIFY(!encoder.errorString().isEmpty());
    }

    void filesAreWhatTheyClaim_data()
    {
        const FilesAreWhatTheyClaimRows row;
        row("mp3 mono", Mp3, 44100, 1, "mp3", "mp3");
        row("mp3 stereo at a low rate", Mp3, 16000, 2, "mp3", "mp3");
        row("ogg", Ogg, 44100, 2, "vorbis", "ogg");
        row("wav", Wav, 32000, 1, "pcm_s16le", "wav");
        row("flac", Flac, 48000, 2, "flac", "flac");
        row("m4a", M4a, 44100, 2, "aac", "mov,mp4,m4a,3gp,3g2,mj2");
    }
    void filesAreWhatTheyClaim()
    {
        const auto [codec, rate, channels, codecName, formatName] = FilesAreWhatTheyClaimRows::fetch();
        const QString path = m_folder.filePath("ä ö." + codecExtension(codec));
        const QByteArray pcm = Counting::frames(0, 5 * rate * channels / 2);
        const auto encoder = createEncoder({codec, 64, 3});
        QVERIFY2(encoder->open(path, {rate, channels}), qPrintable(encoder->errorString()));
        for (qsizetype at = 0; at < pcm.size(); at += 8192)
            QVERIFY(encoder->write(pcm.mid(at, 8192)));
        encoder->close();

        QCOMPARE(codecFromExtension(codecExtension(codec).toUpper()), codec);
        QVERIFY(!encoder->isOpen());
        QVERIFY(!encoder->write(pcm));
        QCOMPARE(encoder->bytesWritten(), codec == Wav ? pcm.size() : QFileInfo(path).size());
        const QJsonObject seen = AudioFiles::probe(path);
        QCOMPARE(seen["codec_name"].toString(), codecName);
        QCOMPARE(seen["format_name"].toString(), formatName);
        QCOMPARE(seen["sample_rate"].toString().toInt(), rate);
        QCOMPARE(seen["channels"].toInt(), channels);
        QVERIFY2(qAbs(seen["duration"].toString().toDouble() - 5.0) < 0.1, qPrintable(seen["duration"].toString()));
        if (codec == Mp3)
            QVERIFY2(qAbs(encoder->bytesWritten() - 40'000) < 2000, QByteArray::number(encoder->bytesWritten()));
        if (codec == Wav || codec == Flac)
            QVERIFY(AudioFiles::decode(path) == pcm);
        QFile::remove(path);
    }

    /// What makes up for an outage comes all at once.
    void anHourOfSilence()
    {
        const QString path = m_folder.filePath("hour.flac");
        const auto encoder = createEncoder({Flac, 64, 3});
        QVERIFY(encoder->open(path, {44100, 2}));
        for (int second = 0; second < 3600; ++second)
            QVERIFY2(encoder->write(QByteArray(176400, '\0')), qPrintable(encoder->errorString()));
        encoder->close();
        QCOMPARE(AudioFiles::probe(path)["duration"].toString(), "3600.000000");
    }

    void bitRateThatTheCodecChooses()
    {
        for (const auto& [codec, bitrate] : {std::pair("aac", 0), {"flac", 192}})
            QVERIFY(!FfmpegEncoder(codec, "x", bitrate).arguments("out.x", {44100, 2}).contains("-b:a"));
    }

    void unknownCodec()
    {
        QCOMPARE(codecExtension(7), "mp3");
        QVERIFY(dynamic_cast<WavEncoder*>(createEncoder({7, 64, 3}).get()));
    }

    void sizeEstimate_data()
    {
        const SizeEstimateRows row;
        row("wav", Wav, 2, 3, 192000);
        row("flac", Flac, 2, 3, 105600);
        row("ogg mono, lowest", Ogg, 1, -1, 4000);
        row("ogg, quality out of range", Ogg, 2, 99, 62500);
        row("mp3", Mp3, 2, 3, 16000);
    }
    void sizeEstimate()
    {
        const auto [codec, channels, quality, bytesPerSecond] = SizeEstimateRows::fetch();
        AppSettings& settings = AppSettings::instance();
        settings.sampleRate = 48000;
        settings.bitrate = 128;
        settings.codec = codec;
        settings.channels = channels;
        settings.vorbisQuality = quality;
        QCOMPARE(estimatedBytesPerSecond(settings), bytesPerSecond);
    }

private:
    static QByteArray content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestEncoders)
#include "tst_encoders.moc"
