#pragma once

#include <QByteArray>
#include <QList>

/// Converts one stream from srcRate to dstRate by linear interpolation, keeping its position across blocks, so that
/// the number of frames never drifts against dstRate / srcRate, however the stream is cut into blocks.
struct LinearResampler {
    int channels = 1;
    int srcRate = 1; ///< Hz
    int dstRate = 1; ///< Hz
    bool passthrough = true;
    /// Read position in input frames, relative to the start of the next block. Always a multiple of 1 / dstRate;
    /// between -1 and 0 it lies between the last frame of the previous block and the first of this one.
    double pos = 0.0;
    QList<qint16> last; ///< the last frame of the previous block, one value per channel

    /// Arguments below 1 are taken as 1. Forgets the previous stream.
    void init(int channelCount, int sourceRate, int targetRate);
    /// Forgets the previous stream, keeps the rates.
    void reset();
    /// \param pcmS16 whole frames of interleaved S16LE at srcRate; a trailing partial frame is ignored.
    /// \return the same audio at dstRate; the block itself when the rates are equal or it is empty. The number of
    /// frames varies by one from block to block. Beyond the last frame of a block its value is held.
    QByteArray process(const QByteArray& pcmS16);
};
