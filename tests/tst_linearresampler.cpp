#include "capture/linearresampler.h"

#include "support/samples.h"
#include "support/table.h"

#include <algorithm>
#include <cmath>
#include <random>

class TestLinearResampler : public QObject {
    Q_OBJECT

    using CutsRows = Table<int, int, int>;

private Q_SLOTS:
    void cuts_data()
    {
        const CutsRows row;
        row("mono up", 1, 44100, 48000);
        row("stereo down", 2, 48000, 44100);
        row("six channels, far down", 6, 192000, 8000);
    }
    // Any cutting gives the same number of frames, and the same values except where a block's last frame is held.
    void cuts()
    {
        const auto [channels, srcRate, dstRate] = CutsRows::fetch();
        LinearResampler resampler;
        resampler.init(channels, srcRate, dstRate);
        constexpr qint64 Frames = 20000;
        std::mt19937 random(1);
        Samples in(Frames * channels);
        std::generate(in.begin(), in.end(), [&] { return qint16(random()); });
        qint64 produced = 0;
        for (qint64 begin = 0, end = 0; begin < Frames; begin = end) {
            end = qMin<qint64>(begin + 1 + random() % 700, Frames);
            const Samples out =
                samplesOf(resampler.process(bytesOf(in.sliced(begin * channels, (end - begin) * channels))));
            for (qint64 i = 0; i < out.size(); ++i) {
                const qint64 position = (produced + i / channels) * srcRate;
                const qint64 before = position / dstRate;
                const int a = in[before * channels + i % channels];
                const int b = in[qMin(before + 1, end - 1) * channels + i % channels];
                QCOMPARE(out[i], qint16(std::round(a + (b - a) * (double(position % dstRate) / dstRate))));
            }
            produced += out.size() / channels;
            QCOMPARE(produced, (end * dstRate + srcRate - 1) / srcRate);
        }
    }

    // At a tenth of 48000 and 44100 Hz to save time: every step has the same fraction.
    void aDayOfAudio()
    {
        LinearResampler resampler;
        resampler.init(1, 4800, 4410);
        const QByteArray block = bytesOf(Samples(47989, -12345));
        qint64 produced = 0;
        for (qint64 left = 86400 * 4800; left > 0; left -= 47989)
            produced += resampler.process(block.first(2 * qMin<qint64>(left, 47989))).size() / 2;
        QCOMPARE(produced, 86400 * 4410);
        QCOMPARE(resampler.pos, 0.0);
    }

    void positionBeforeTheBlock()
    {
        LinearResampler resampler{1, 22050, 44100, false, -0.5, {1000}};
        QCOMPARE(samplesOf(resampler.process(bytesOf({2000, 3000}))), (Samples{1500, 2000, 2500, 3000, 3000}));
    }

    void oddBlocks()
    {
        LinearResampler resampler;
        resampler.init(0, -5, 2); // from one channel at 1 Hz
        QCOMPARE(resampler.process("odd"), QByteArray("odod"));
        resampler.init(1, 8000, 8000);
        QCOMPARE(resampler.process("odd"), QByteArray("odd"));
        resampler.init(2, 48000, 44100);
        QCOMPARE(resampler.process("odd"), QByteArray());
        QCOMPARE(resampler.process("five."), QByteArray("five"));
    }
};

QTEST_GUILESS_MAIN(TestLinearResampler)
#include "tst_linearresampler.moc"
