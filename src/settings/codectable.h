#pragma once

#include <QCoreApplication>
#include <QString>

#include <array>

class AppSettings;

/// The recording codecs, by the number that the settings hold: the row of the table below.
enum Codec { Mp3 = 0, Ogg = 1, Wav = 2, Flac = 3, M4a = 4 };

/// One row per codec. Everything that the program knows about a codec is there.
struct CodecRow {
    /// Which setting decides what a recording takes on disk.
    enum class Size { Bitrate, VorbisQuality, ShareOfPcm };

    const char* extension; ///< of the files, and the codec's name in the settings store
    const char* alias; ///< another extension of such files; null: none
    const char* label; ///< in the settings dialog, to be translated in the context "RecordingTab"
    const char* unavailable; ///< what the dialog says when ffmpeg is missing, translated as label is; null: none needed
    const char* ffmpegCodec; ///< null: written without ffmpeg
    const char* ffmpegFormat;
    Size size;
    int percentOfPcm; ///< used with Size::ShareOfPcm
    bool encoderTakesBitrate; ///< whether the configured bit rate reaches the encoder
};
inline constexpr std::array<CodecRow, 5> Codecs{{
    {"mp3", nullptr, QT_TRANSLATE_NOOP("RecordingTab", "MP3"),
     QT_TRANSLATE_NOOP("RecordingTab", "MP3 needs either LAME compiled in or ffmpeg on the PATH."), "libmp3lame", "mp3",
     CodecRow::Size::Bitrate, 0, true},
    {"ogg", nullptr, QT_TRANSLATE_NOOP("RecordingTab", "Ogg Vorbis"),
     QT_TRANSLATE_NOOP("RecordingTab", "Ogg needs either libvorbis compiled in or ffmpeg on the PATH."), "libvorbis",
     "ogg", CodecRow::Size::VorbisQuality, 0, true},
    {"wav", nullptr, QT_TRANSLATE_NOOP("RecordingTab", "WAV (uncompressed)"), nullptr, nullptr, nullptr,
     CodecRow::Size::ShareOfPcm, 100, false},
    {"flac", nullptr, QT_TRANSLATE_NOOP("RecordingTab", "FLAC"),
     QT_TRANSLATE_NOOP("RecordingTab", "This codec requires ffmpeg on the PATH."), "flac", "flac",
     CodecRow::Size::ShareOfPcm, 55, false},
    {"m4a", "aac", QT_TRANSLATE_NOOP("RecordingTab", "AAC"),
     QT_TRANSLATE_NOOP("RecordingTab", "This codec requires ffmpeg on the PATH."), "aac", "ipod",
     CodecRow::Size::Bitrate, 0, true},
}};

/// The codec with this number; a number outside the table is MP3.
const CodecRow& codecRow(int codec);
/// Extension of the codec's files, without a dot; a number outside the table is MP3.
QString codecExtension(int codec);
/// The codec of this extension in upper or lower case; an unknown one is MP3.
int codecFromExtension(const QString& extension);

/// What decides the size of a recording; units and ranges as in AppSettings.
struct RecordingFormat {
    int codec = 0;
    int sampleRate = 0;
    int channels = 0;
    int bitrate = 0;
    int vorbisQuality = 0;
};
/// What a recording in this format takes on disk, in bytes per second.
qint64 estimatedBytesPerSecond(const RecordingFormat& format);
/// What a recording with these settings takes on disk, in bytes per second, for the free-space display.
qint64 estimatedBytesPerSecond(const AppSettings& settings);
