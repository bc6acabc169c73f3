#pragma once

#include <QByteArrayView>

/// The format of the samples that a device delivers, interleaved and little-endian.
struct MixFormat {
    int sampleRate = 0; ///< Hz
    int channels = 0;
    int bitsPerSample = 0;
    bool isFloat = false;
    int frameBytes = 0;

    /// \param wave a WAVEFORMATEX or WAVEFORMATEXTENSIBLE with all that follows it.
    /// What is cut off reads as 0: a mix without channels, which converts to nothing.
    static MixFormat fromWaveFormat(QByteArrayView wave);

    bool operator==(const MixFormat&) const = default;
};
