#pragma once

/// What a consumer wants to hear: the rate and channel count of every PCM block (`pcmS16`) it is given.
/// A block is a QByteArray of interleaved signed 16-bit little-endian samples without any header.
struct PcmFormat {
    int sampleRate = 44100; ///< frames per second
    int channels = 2; ///< 1 or 2 in practice

    int frameBytes() const { return channels * 2; }

    friend bool operator==(const PcmFormat&, const PcmFormat&) = default;
};
