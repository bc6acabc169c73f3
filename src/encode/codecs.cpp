#include "encode/codecs.h"

#include "app/appsettings.h"
#include "capture/ffmpeg.h"
#include "encode/ffmpegencoder.h"
#include "encode/wavencoder.h"

#include <algorithm>

namespace {

const CodecRow* rowOf(int codec)
{
    return codec >= 0 && codec < int(Codecs.size()) ? &Codecs[size_t(codec)] : nullptr;
}

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

QString codecExtension(int codec)
{
    const CodecRow* row = rowOf(codec);
    return QLatin1String((row ? *row : Codecs[Mp3]).extension);
}

int codecFromExtension(const QString& extension)
{
    const QString lower = extension.toLower();
    if (lower == QLatin1String("aac"))
        return M4a;
    const auto row = std::find_if(Codecs.begin(), Codecs.end(),
                                  [&](const CodecRow& codec) { return lower == QLatin1String(codec.extension); });
    return row == Codecs.end() ? Mp3 : int(row - Codecs.begin());
}

std::unique_ptr<Encoder> createEncoder(const EncoderConfig& config)
{
    const CodecRow* row = rowOf(config.codec);
    if (!row || !row->ffmpegCodec || !ffmpegAvailable())
        return std::make_unique<WavEncoder>();
    return std::make_unique<FfmpegEncoder>(QLatin1String(row->ffmpegCodec), QLatin1String(row->ffmpegFormat),
                                           row->hasBitrate ? config.bitrate : 0);
}

qint64 estimatedBytesPerSecond(const AppSettings& settings)
{
    const qint64 pcm = qint64(settings.sampleRate) * settings.channels;
    switch (settings.codec) {
    case Wav:
        return pcm * 2;
    case Flac:
        return pcm * 110 / 100; // 55 % of the WAV
    case Ogg:
        return vorbisBytesPerSecond(settings.vorbisQuality, settings.channels);
    default:
        return qint64(settings.bitrate) * 125;
    }
}
