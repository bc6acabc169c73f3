#include "settings/codectable.h"

#include "settings/appsettings.h"

#include <algorithm>

namespace {

/// Nominal kbit/s in stereo of the Vorbis qualities -1 to 10.
constexpr std::array<int, 12> VorbisKbps{45, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 500};

qint64 vorbisBytesPerSecond(int quality, int channels)
{
    const int kbps = VorbisKbps[size_t(std::clamp(quality, -1, 10) + 1)];
    if (channels != 1)
        return qint64(kbps) * 125;
    // Mono takes about half, but not below what the encoder needs at all.
    return kbps < 66 ? 4000 : qint64(kbps / 2) * 125;
}

} // namespace

const CodecRow& codecRow(int codec)
{
    return Codecs[codec >= 0 && codec < int(Codecs.size()) ? size_t(codec) : size_t(Mp3)];
}

QString codecExtension(int codec)
{
    return QLatin1String(codecRow(codec).extension);
}

int codecFromExtension(const QString& extension)
{
    const QString lower = extension.toLower();
    const auto row = std::find_if(Codecs.begin(), Codecs.end(), [&](const CodecRow& codec) {
        return lower == QLatin1String(codec.extension) || (codec.alias && lower == QLatin1String(codec.alias));
    });
    return row == Codecs.end() ? Mp3 : int(row - Codecs.begin());
}

qint64 estimatedBytesPerSecond(const RecordingFormat& format)
{
    const CodecRow& row = codecRow(format.codec);
    switch (row.size) {
    case CodecRow::Size::ShareOfPcm:
        return qint64(format.sampleRate) * format.channels * 2 * row.percentOfPcm / 100;
    case CodecRow::Size::VorbisQuality:
        return vorbisBytesPerSecond(format.vorbisQuality, format.channels);
    case CodecRow::Size::Bitrate:
        break;
    }
    return qint64(format.bitrate) * 125;
}

qint64 estimatedBytesPerSecond(const AppSettings& settings)
{
    return estimatedBytesPerSecond(RecordingFormat{settings.codec, settings.sampleRate, settings.channels,
                                                   settings.bitrate, settings.vorbisQuality});
}
