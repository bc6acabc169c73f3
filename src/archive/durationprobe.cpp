#include "archive/durationprobe.h"

#include <QFile>
#include <QtEndian>

#include <array>

namespace {

constexpr qint64 CanonicalWavHeader = 44; // taken as given, whatever chunks the file really has
constexpr qint64 WavHead = 64;
constexpr qint64 Id3Header = 10;
constexpr qint64 Mp3Search = 8192;

/// Bit rates in kbit/s of MPEG layer III, by the frame header's bit-rate index (ISO/IEC 11172-3 and 13818-3).
constexpr std::array Mpeg1Kbps = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
constexpr std::array Mpeg2Kbps = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};

qint64 wavDurationMs(QFile& file)
{
    const QByteArray head = file.read(WavHead);
    if (head.size() < CanonicalWavHeader || !head.startsWith("RIFF"))
        return 0;
    const qsizetype format = head.indexOf("fmt ");
    if (format < 0 || format + 20 > head.size())
        return 0;
    const qint64 byteRate = qFromLittleEndian<quint32>(head.constData() + format + 16);
    return byteRate == 0 ? 0 : (file.size() - CanonicalWavHeader) * 1000 / byteRate;
}

/// Size of the ID3v2 tag these first bytes of a file begin, its header included; 0 when they begin none.
qint64 id3TagSize(const QByteArray& head)
{
    if (head.size() != Id3Header || !head.startsWith("ID3"))
        return 0;
    qint64 size = 0;
    for (int i = 6; i < Id3Header; ++i)
        size = size << 7 | (head.at(i) & 0x7F);
    return Id3Header + size;
}

/// Bit rate of the first layer III frame header in these bytes, in kbit/s; 0 when there is none.
int firstFrameKbps(const QByteArray& audio)
{
    for (qsizetype p = 0; p < audio.size() - 3; ++p) {
        const auto byteAt = [&](qsizetype i) { return static_cast<uchar>(audio.at(p + i)); };
        const bool sync = byteAt(0) == 0xFF && (byteAt(1) & 0xE0) == 0xE0;
        const bool layer3 = (byteAt(1) & 0x06) == 0x02;
        if (!sync || !layer3)
            continue;
        const bool mpeg1 = (byteAt(1) & 0x18) == 0x18;
        if (const int kbps = (mpeg1 ? Mpeg1Kbps : Mpeg2Kbps)[byteAt(2) >> 4]; kbps > 0)
            return kbps;
    }
    return 0;
}

qint64 mp3DurationMs(QFile& file)
{
    const qint64 audioStart = id3TagSize(file.read(Id3Header));
    if (!file.seek(audioStart))
        return 0;
    const qint64 kbps = firstFrameKbps(file.read(Mp3Search));
    return kbps == 0 ? 0 : (file.size() - audioStart) * 8 / (kbps * 1000) * 1000;
}

} // namespace

qint64 probeDurationMs(const QString& filePath)
{
    const bool wav = filePath.endsWith(u".wav", Qt::CaseInsensitive);
    const bool mp3 = filePath.endsWith(u".mp3", Qt::CaseInsensitive);
    if (!wav && !mp3)
        return 0; // not even opened: a folder of other formats is rescanned at the price of its listing
    QFile file(filePath);
    // Unbuffered, because QFile would otherwise read 16 KB to hand out 64 bytes.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 0;
    return wav ? wavDurationMs(file) : mp3DurationMs(file);
}
