#pragma once

#include <QByteArray>
#include <QList>

/// The 16-bit samples of a PCM block, and back.
using Samples = QList<qint16>;

inline Samples samplesOf(const QByteArray& pcm)
{
    const auto* first = reinterpret_cast<const qint16*>(pcm.constData());
    return Samples(first, first + pcm.size() / 2);
}

inline QByteArray bytesOf(const Samples& samples)
{
    return QByteArray(reinterpret_cast<const char*>(samples.constData()), samples.size() * 2);
}
