#include "encode/encoderfactory.h"

#include "encode/ffmpegencoder.h"
#include "encode/wavencoder.h"
#include "process/ffmpeg.h"

std::unique_ptr<Encoder> createEncoder(const EncoderConfig& config)
{
    const bool known = config.codec >= 0 && config.codec < int(Codecs.size());
    const CodecRow& row = codecRow(config.codec);
    if (!known || !row.ffmpegCodec || !ffmpegAvailable())
        return std::make_unique<WavEncoder>();
    return std::make_unique<FfmpegEncoder>(QLatin1String(row.ffmpegCodec), QLatin1String(row.ffmpegFormat),
                                           row.encoderTakesBitrate ? config.bitrate : 0);
}
