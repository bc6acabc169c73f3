#include "capture/mixformat.h"

#include <QtEndian>

namespace {

constexpr int WaveFormatIeeeFloat = 3; // WAVE_FORMAT_IEEE_FLOAT
constexpr int WaveFormatExtensible = 0xFFFE; // WAVE_FORMAT_EXTENSIBLE

/// Where they lie in WAVEFORMATEXTENSIBLE, which is packed.
enum Offset : qsizetype { Tag = 0, Channels = 2, Rate = 4, BlockAlign = 12, Bits = 14, SubFormat = 24 };

/// KSDATAFORMAT_SUBTYPE_IEEE_FLOAT, 00000003-0000-0010-8000-00aa00389b71, as it lies in memory.
constexpr char SubFormatFloat[] = "\x03\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xaa\x00\x38\x9b\x71";
constexpr qsizetype GuidBytes = 16;

template <class Number>
int read(QByteArrayView wave, Offset at)
{
    return wave.size() < at + qsizetype(sizeof(Number)) ? 0 : int(qFromLittleEndian<Number>(wave.data() + at));
}

bool holdsFloats(QByteArrayView wave)
{
    const int tag = read<quint16>(wave, Tag);
    return tag == WaveFormatIeeeFloat ||
           (tag == WaveFormatExtensible && wave.size() >= SubFormat + GuidBytes &&
            wave.sliced(SubFormat, GuidBytes) == QByteArrayView(SubFormatFloat, GuidBytes));
}

} // namespace

MixFormat MixFormat::fromWaveFormat(QByteArrayView wave)
{
    return {read<quint32>(wave, Rate), read<quint16>(wave, Channels), read<quint16>(wave, Bits), holdsFloats(wave),
            read<quint16>(wave, BlockAlign)};
}
