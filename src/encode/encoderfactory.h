#pragma once

#include "settings/codectable.h"

#include <memory>

class Encoder;

struct EncoderConfig {
    int codec = Mp3;
    int bitrate = 64; ///< kbit/s
    int vorbisQuality = 3; ///< -1 to 10; only sizes are estimated from it
};

/// A new encoder for this codec. Without ffmpeg, and for an unknown codec, that is the WAV encoder: a missing ffmpeg
/// must not stop a recording.
std::unique_ptr<Encoder> createEncoder(const EncoderConfig& config);
