#pragma once

#include <QByteArray>
#include <QList>

#include <algorithm>

/// The 16-bit samples of a PCM block, and back.
using Samples = QList<qint16>;

inline Samples samplesOf(const QByteArray& pcm)
{
    Samples samples(pcm.size() / 2);
    std::copy_n(pcm.constData(), samples.size() * 2, reinterpret_cast<char*>(samples.data()));
    return samples;
}

inline QByteArray bytesOf(const Samples& samples)
{
    return QByteArray(reinterpret_cast<const char*>(samples.constData()), samples.size() * 2);
}
