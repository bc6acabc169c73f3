#include "capture/pcmconvert.h"

#include "support/samples.h"
#include "support/table.h"

#include <bit>
#include <cmath>
#include <random>

namespace {

template <class... Values>
QByteArray rawBytes(Values... values)
{
    QByteArray bytes;
    (bytes.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
    return bytes;
}

struct Layout {
    int bits = 0;
    bool isFloat = false;
    int srcChannels = 1;
    int dstChannels = 1;
};

QByteArray convert(const QByteArray& in, const Layout& layout, const GainStage& gain = {})
{
    return convertToS16(reinterpret_cast<const uchar*>(in.constData()), in.size(), layout.srcChannels, layout.bits,
                        layout.isFloat, layout.dstChannels, gain);
}

// The plain way, one sample at a time, that the fast way is held against.
double decoded(const QByteArray& in, qint64 index, const Layout& layout)
{
    const int bytes = layout.bits / 8;
    quint64 raw = 0;
    for (int i = bytes - 1; i >= 0; --i)
        raw = raw << 8 | quint8(in[index * bytes + i]);
    if (layout.isFloat)
        return 32767.0 * (bytes == 4 ? double(std::bit_cast<float>(quint32(raw))) : std::bit_cast<double>(raw));
    if (bytes == 1)
        return (double(raw) - 128.0) * 256.0;
    const double value = raw >> (layout.bits - 1) ? double(raw) - std::ldexp(1.0, layout.bits) : double(raw);
    return value / std::ldexp(1.0, layout.bits - 16);
}

qint16 gained(double x, const GainStage& stage)
{
    double y = x * stage.gain;
    if (std::isnan(y))
        return 0;
    if (const double magnitude = std::fabs(y); magnitude > 29203.0) {
        ++*stage.overCount;
        if (stage.limiter)
            y = std::copysign(29203.0 + 3564.0 * std::tanh((magnitude - 29203.0) / 3564.0), y);
    }
    // Not std::round(): on Windows it makes 1 of 0.49999999999999994.
    y = qBound(-32768.0, y, 32767.0);
    const double whole = std::trunc(y);
    return qint16(std::fabs(y - whole) < 0.5 ? whole : whole + std::copysign(1.0, y));
}

Samples reference(const QByteArray& in, const Layout& layout, const GainStage& stage)
{
    const int src = layout.srcChannels;
    Samples out;
    for (qint64 frame = 0; frame < in.size() / (layout.bits / 8 * src); ++frame) {
        double sum = 0.0;
        for (int c = 0; c < src; ++c)
            sum += decoded(in, frame * src + c, layout);
        for (int c = 0; c < layout.dstChannels; ++c) {
            const double sample = decoded(in, frame * src + qMin(c, src - 1), layout);
            out += gained(layout.dstChannels == 1 ? sum / src : sample, stage);
        }
    }
    return out;
}

/// Samples of all kinds: any bit pattern, ordinary level, what comes close to n + 1/2 after gain, and borders.
QByteArray torture(int bits, bool isFloat, double gain)
{
    const double borders[] = {1.0, 29203.0, -29203.0, -32768.0, 32767.0, std::nan(""), HUGE_VAL, -HUGE_VAL};
    std::mt19937_64 random(1);
    std::normal_distribution<double> ordinary(0.0, 3000.0);
    QByteArray bytes;
    for (int i = 0; i < 20005; ++i) {
        const double half = qBound(-32768.0, (double(random() % 58000) - 28999.5) / gain, 32767.0);
        const double x = i % 99 == 0 ? borders[random() % (isFloat ? 8 : 5)] : i % 3 == 0 ? half : ordinary(random);
        if (i % 64 == 1)
            bytes += rawBytes(random()).first(bits / 8);
        else if (isFloat)
            bytes += bits == 32 ? rawBytes(float(x / 32767.0)) : rawBytes(x / 32767.0);
        else
            bytes += rawBytes(std::llround(std::ldexp(x, bits - 16)) + (bits == 8 ? 128 : 0)).first(bits / 8);
    }
    return bytes;
}

} // namespace

class TestPcmConvert : public QObject {
    Q_OBJECT

    using LikeReferenceRows = Table<Layout>;

private Q_SLOTS:
    void likeReference_data()
    {
        const LikeReferenceRows row;
        for (const Layout& format : {Layout{8}, {16}, {24}, {32}, {32, true}, {64, true}})
            row(QByteArray::number(format.bits) + (format.isFloat ? " float" : ""), format);
    }
    void likeReference()
    {
        const auto [format] = LikeReferenceRows::fetch();
        for (const double gain : {1.0, GainStage::factorFromDb(3.0), -1.7, 1e35, 1.0000000001, 0.49999999999999994}) {
            // A driver's buffer may begin anywhere.
            const QByteArray shifted = "x" + torture(format.bits, format.isFloat, gain);
            const auto in = QByteArray::fromRawData(shifted.constData() + 1, shifted.size() - 1);
            quint64 overs = 0, expectedOvers = 0;
            for (const auto& [src, dst, limiter] :
                 {std::tuple(1, 1, false), {2, 2, true}, {3, 2, true}, {6, 1, false}, {2, 4, true}}) {
                const Layout layout{format.bits, format.isFloat, src, dst};
                const Samples expected = reference(in, layout, {gain, limiter, &expectedOvers});
                QCOMPARE(samplesOf(convert(in, layout, {gain, limiter, &overs})), expected);
                QCOMPARE(overs, expectedOvers);
            }
        }
    }

    void unusable()
    {
        const QByteArray eight(8, '\x40');
        for (const Layout& silent : {Layout{12}, {16, true}, {64}})
            QCOMPARE(convert(eight, silent), QByteArray(8 / (silent.bits / 8) * 2, '\0'));
        for (const Layout& layout : {Layout{16, false, 0, 2}, {16, false, 2, 0}, {7, false, 2, 2}, {64, true, 2, 2}})
            QCOMPARE(convert(eight, layout), QByteArray());
        QCOMPARE(convertToS16(nullptr, -8, 2, 16, false, 2, {}), QByteArray());
    }

    void deviceFormats()
    {
        const QByteArray in = rawBytes(0.5F, -0.25F);
        QAudioFormat format;
        format.setChannelCount(2);
        for (const auto& [kind, expected] : {std::pair(QAudioFormat::Unknown, Samples{}),
                                             {QAudioFormat::Int32, {16128, -16768}},
                                             {QAudioFormat::Float, {16384, -8192}}}) {
            format.setSampleFormat(kind);
            const auto* data = reinterpret_cast<const uchar*>(in.constData());
            QCOMPARE(samplesOf(convertToS16(data, in.size(), format, 2, {})), expected);
        }
    }

    // In place means the same as a conversion from 16 bits, but not at unity gain.
    void applyGain()
    {
        for (const auto& [gain, limiter, touched] :
             {std::tuple(1.0 + 9e-13, false, false), {1.0, true, true}, {1.5, false, true}}) {
            QByteArray pcm = "x" + torture(16, false, gain) + "x";
            pcm.remove(0, 1); // the samples now begin at an odd address
            const QByteArray before = pcm;
            quint64 overs = 0, expectedOvers = 0;
            const QByteArray expected = convert(before, {16}, {gain, limiter, &expectedOvers}) + "x";
            applyGainS16(pcm, {gain, limiter, &overs});
            QCOMPARE(pcm, touched ? expected : before);
            QCOMPARE(overs, touched ? expectedOvers : 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestPcmConvert)
#include "tst_pcmconvert.moc"
