#pragma once

#include <QByteArray>
#include <QtEndian>

/// Stereo PCM in which each frame tells its own number, so that a missing or doubled one is found. The values stay
/// below the limiter's knee.
namespace Counting {

constexpr int Base = 20000;

inline QByteArray frames(qint64 first, qint64 count)
{
    QByteArray pcm(count * 4, Qt::Uninitialized);
    auto* sample = reinterpret_cast<qint16*>(pcm.data());
    for (qint64 n = first; n < first + count; ++n) {
        *sample++ = qToLittleEndian(qint16(n % Base));
        *sample++ = qToLittleEndian(qint16(n / Base));
    }
    return pcm;
}

/// Number of one frame.
inline qint64 numberAt(const QByteArray& pcm, qint64 frame)
{
    const char* data = pcm.constData() + frame * 4;
    return qFromLittleEndian<qint16>(data) + qint64(Base) * qFromLittleEndian<qint16>(data + 2);
}

} // namespace Counting
