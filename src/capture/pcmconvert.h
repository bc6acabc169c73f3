#pragma once

#include "capture/channelpick.h"

#include <QAudioFormat>
#include <QByteArray>

/// The input gain and what it reports. All values are on the 16-bit scale (full scale 32768).
struct GainStage {
    double gain = 1.0; ///< linear factor, 10^(dB / 20)
    bool limiter = false; ///< soft limiting above the threshold instead of hard clipping at full scale
    quint64* overCount = nullptr; ///< if set: grows by the number of samples beyond the threshold after gain

    /// Magnitude above which a sample counts as an overload and the soft limiter's knee begins: -1 dBFS.
    static constexpr double Threshold = 29203.0;

    static double factorFromDb(double db);
};

/// Converts one chunk of a source's samples into a PCM block of dstChannels channels, applying gain and limiter.
/// \param data interleaved little-endian samples: integers of 8 (unsigned), 16, 24 or 32 bits, floats of 32 or 64 bits;
///        any other width is read as silence. A trailing partial frame is ignored.
/// \param bytes length of data.
/// \param pick the source channels that are used; all others are ignored.
/// One target channel gets the mean of all source channels; more target channels than source channels repeat the last
/// one; fewer keep the first ones.
/// \return frames x dstChannels samples; empty when an argument is not positive, no whole frame is there, or the source
///         lacks the channels picked.
QByteArray convertToS16(const uchar* data, qint64 bytes, int srcChannels, int bitsPerSample, bool isFloat,
                        int dstChannels, const GainStage& gain, const ChannelPick& pick = {});

/// convertToS16() with width, kind and channel count taken from a device's format; empty for an unknown sample format.
QByteArray convertToS16(const uchar* data, qint64 bytes, const QAudioFormat& format, int dstChannels,
                        const GainStage& gain, const ChannelPick& pick = {});

/// Gain and limiter in place, on a block that is 16-bit already. Leaves the block alone, and counts nothing, when the
/// gain is 1 (within 1e-12) and the limiter is off. An odd last byte stays as it is.
void applyGainS16(QByteArray& pcm, const GainStage& gain);
