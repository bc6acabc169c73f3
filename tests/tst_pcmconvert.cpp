#include "capture/pcmconvert.h"

#include "support/samples.h"
#include "support/table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

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

QByteArray convert(const QByteArray& in, const Layout& layout, const GainStage& gain = {}, const ChannelPick& pick = {})
{
    return convertToS16(reinterpret_cast<const uchar*>(in.constData()), in.size(), layout.srcChannels, layout.bits,
                        layout.isFloat, layout.dstChannels, gain, pick);
}

/// The plain way, one sample at a time, that the fast way is held against.
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

/// Samples that come as close to n + 1/2 after gain as they can, from beyond the negative to beyond the positive
/// border.
template <class Sample>
QList<Sample> nearHalves(double scale, double gain)
{
    QList<Sample> samples;
    for (int n = -33000; n < 33000; ++n) {
        const double half = (n + 0.5) / gain / scale;
        for (const int step : {-1, 0, 1}) {
            if constexpr (std::is_integral_v<Sample>)
                samples += Sample(std::clamp(std::floor(half) + step, double(std::numeric_limits<Sample>::min()),
                                             double(std::numeric_limits<Sample>::max())));
            else
                samples += std::nextafter(Sample(half), Sample(half + step));
        }
    }
    return samples;
}

template <class Sample>
void compareRounding(double scale)
{
    const Layout mono{sizeof(Sample) * 8, std::is_floating_point_v<Sample>};
    for (const double gain : {1.0, GainStage::factorFromDb(3.0), -1.7, 1e34, 0.49999999999999994}) {
        for (const bool limiter : {false, true}) {
            quint64 overs = 0, expectedOvers = 0;
            QByteArray in = "x"; // a driver's buffer may begin anywhere
            Samples expected;
            for (const Sample sample : nearHalves<Sample>(scale, gain)) {
                in += rawBytes(sample);
                expected += gained(double(sample) * scale, {gain, limiter, &expectedOvers});
            }
            const auto shifted = QByteArray::fromRawData(in.constData() + 1, in.size() - 1);
            QCOMPARE(samplesOf(convert(shifted, mono, {gain, limiter, &overs})), expected);
            QCOMPARE(overs, expectedOvers);
        }
    }
}

} // namespace

class TestPcmConvert : public QObject {
    Q_OBJECT

    using PickRows = Table<int, ChannelPick, int, Samples>; // of the device, of the output
    using FormatRows = Table<Layout, QByteArray, Samples>;

private Q_SLOTS:
    void formats_data()
    {
        const FormatRows row;
        row("8 bits", {8}, "0080ff", {-32768, 0, 32512});
        row("16 bits", {16}, "0080ffff0100ff7f", {-32768, -1, 1, 32767});
        row("24 bits", {24}, "00008080000080ffff7f0000000040ffff7f", {-32768, 1, -1, 0, 16384, 32767});
        row("32 bits", {32}, "00000080008000000080ffffff7f0000ffffff7f", {-32768, 1, -1, 0, 32767});
        row("float", {32, true}, "0000003f000080be000080bf000000c00000c07f0000807f",
            {16384, -8192, -32767, -32768, 0, 32767});
        row("double", {64, true}, "000000000000e03f000000000000f0bf000000000000f87f000000000000f0ff",
            {16384, -32767, 0, -32768});
        row("six channels to one", {16, false, 6, 1}, "010002000300040005000700", {4});
        row("three to two", {24, false, 3, 2}, "000100000200000300", {1, 2});
        row("two to four", {16, false, 2, 4}, "01000200", {1, 2, 2, 2});
    }
    void formats()
    {
        const auto [layout, hex, expected] = FormatRows::fetch();
        // Many of them together, as they are converted in groups.
        const QByteArray in = QByteArray::fromHex(hex).repeated(1001);
        QCOMPARE(convert(in, layout), bytesOf(expected).repeated(1001));
    }

    void rounding()
    {
        compareRounding<qint16>(1.0);
        compareRounding<qint32>(1.0 / 65536);
        compareRounding<float>(32767.0);
        compareRounding<double>(32767.0);
    }

    // The channels of a pick, as if the device had no others.
    void picks_data()
    {
        const PickRows row; // the sample of channel n is n
        row("the last pair of sixteen", 16, {15, 2}, 2, {15, 16});
        row("a pair to mono", 16, {4, 2}, 1, {5}); // 4.5
        row("one channel to both sides", 5, {5, 1}, 2, {5, 5});
        row("one channel alone", 5, {2, 1}, 1, {2});
        row("all there is", 2, {1, 2}, 2, {1, 2});
        row("beyond the device", 2, {2, 2}, 2, {});
    }
    void picks()
    {
        const auto [channels, pick, dstChannels, expected] = PickRows::fetch();
        Samples frame;
        for (int channel = 1; channel <= channels; ++channel)
            frame.append(qint16(channel));
        // Many of them together, as they are converted in groups.
        const QByteArray in = bytesOf(frame).repeated(1001);
        QCOMPARE(convert(in, {16, false, channels, dstChannels}, {}, pick), bytesOf(expected).repeated(1001));
    }

    void picksFromSettings_data()
    {
        const Table<int, int, ChannelPick> row;
        row("by default, everything", 0, 2, {});
        row("the last pair", 63, 2, {63, 2});
        row("the last channel", 64, 1, {64, 1});
        row("a pair that ends beyond the last channel", 64, 2, {});
        row("beyond the last channel", 65, 1, {});
        row("negative", -1, 1, {});
        row("any other count is a pair", 4, 7, {4, 2});
    }
    void picksFromSettings()
    {
        const auto [first, count, expected] = Table<int, int, ChannelPick>::fetch();
        QCOMPARE(ChannelPick::fromSettings(first, count), expected);
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
            QByteArray pcm = "x" + bytesOf(nearHalves<qint16>(1.0, gain)) + "x";
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
