#pragma once

#include <QString>

#include <array>
#include <memory>

class AppSettings;
class Encoder;

/// The recording codecs, by the number that the settings hold.
enum Codec { Mp3 = 0, Ogg = 1, Wav = 2, Flac = 3, M4a = 4 };

/// One row a codec; its place in the table is its number. WAV is written without ffmpeg and has no names there.
struct CodecRow {
    const char* extension; ///< of the files, and the codec's name in the settings store
    const char* ffmpegCodec;
    const char* ffmpegFormat;
    bool hasBitrate; ///< whether the configured bit rate reaches the encoder
};
inline constexpr std::array<CodecRow, 5> Codecs{{
    {"mp3", "libmp3lame", "mp3", true},
    {"ogg", "libvorbis", "ogg", true},
    {"wav", nullptr, nullptr, false},
    {"flac", "flac", "flac", false},
    {"m4a", "aac", "ipod", true},
}};

/// A number outside the table reads as MP3.
QString codecExtension(int codec);
/// Whatever the case; "aac" is M4A, and anything unknown MP3.
int codecFromExtension(const QString& extension);

struct EncoderConfig {
    int codec = Mp3;
    int bitrate = 64; ///< kbit/s
    int vorbisQuality = 3; ///< -1 to 10; only sizes are estimated from it
};

/// A new encoder for this codec. Without ffmpeg, and for an unknown codec, that is the WAV encoder: a missing ffmpeg
/// must not stop a recording.
std::unique_ptr<Encoder> createEncoder(const EncoderConfig& config);

/// What a recording with these settings takes on disk, for the free-space display.
qint64 estimatedBytesPerSecond(const AppSettings& settings);
