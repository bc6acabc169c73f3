#include "engine/levelanalyzer.h"

#include "support/samples.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <random>

using Levels = QList<double>; ///< peak, RMS, left, right

namespace {

/// Everything that is queued, in the order of the signals.
QList<Levels> release(LevelAnalyzer& analyzer)
{
    QList<Levels> readings;
    const QObject receiver;
    QObject::connect(&analyzer, &LevelAnalyzer::levelChanged, &receiver, [&](double peak, double rms) {
        readings.append({peak, rms});
    });
    QObject::connect(&analyzer, &LevelAnalyzer::channelLevels, &receiver,
                     [&](double left, double right) { readings.last() << left << right; });
    for (qsizetype before = -1; before != readings.size(); analyzer.emitNextSample())
        before = readings.size();
    return readings;
}

} // namespace

class TestLevelAnalyzer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void levels_data();
    void levels();
    void keepsTheNewest();
    void silence_data();
    void silence();
    void releasesSteadily();
};

void TestLevelAnalyzer::levels_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<QList<int>>("chunks"); ///< their lengths in frames
    Samples noise(4410);
    std::mt19937 random(1);
    for (qint16& sample : noise)
        sample = qint16(random()) / 4;
    QTest::newRow("silence") << 44100 << 2 << Samples(1764, 0) << QList<int>{882};
    QTest::newRow("full scale") << 44100 << 1 << Samples(882, -32768) << QList<int>{882};
    QTest::newRow("floor, left a little above") << 99 << 2 << Samples{33, -32} << QList<int>{1};
    QTest::newRow("mono, whole chunks") << 44100 << 1 << noise << QList<int>{882, 882, 882, 882, 882};
    QTest::newRow("stereo, rest, partial frame") << 44100 << 2 << noise.first(2001) << QList<int>{882, 118};
    QTest::newRow("three channels, loudest last") << 8000 << 3 << Samples{1, 2, -20000, 4, 5, 6} << QList<int>{2};
    QTest::newRow("no channels count as one") << 100 << 0 << Samples{100, 20000, -7} << QList<int>{2, 1};
    QTest::newRow("less than a frame") << 44100 << 2 << Samples{1} << QList<int>{};
}

void TestLevelAnalyzer::levels()
{
    QFETCH(int, rate);
    QFETCH(int, channels);
    QFETCH(Samples, samples);
    QFETCH(QList<int>, chunks);
    QList<Levels> expected;
    qsizetype i = 0;
    for (const int frames : chunks) {
        const int count = frames * qMax(channels, 1);
        double sum = 0, left = 0, right = 0;
        for (const qsizetype end = i + count; i < end; ++i) {
            const double magnitude = std::fabs(double(samples[i]));
            sum += magnitude * magnitude;
            double& side = channels <= 1 || i % channels == 0 ? left : right;
            side = qMax(side, magnitude);
        }
        Levels levels{qMax(left, right), std::sqrt(sum / count), left, channels <= 1 ? left : right};
        for (double& value : levels)
            value = value > 32.768 ? 20 * std::log10(value / 32768) : -60.0;
        expected.append(levels);
    }
    LevelAnalyzer analyzer;
    analyzer.configure({rate, channels});
    analyzer.process(bytesOf(samples));
    QCOMPARE(release(analyzer), expected);
}

void TestLevelAnalyzer::keepsTheNewest()
{
    LevelAnalyzer analyzer;
    analyzer.configure({50, 1});
    Samples samples(700);
    for (int i = 0; i < 700; ++i)
        samples[i] = qint16(1000 + i);
    analyzer.process(bytesOf(samples));
    const QList<Levels> readings = release(analyzer);
    QCOMPARE(readings.size(), LevelAnalyzer::MaxReadings);
    QCOMPARE(readings.first().first(), 20 * std::log10(1100 / 32768.0));
    analyzer.process(bytesOf(samples));
    analyzer.reset();
    QVERIFY(release(analyzer).isEmpty());
}

void TestLevelAnalyzer::silence_data()
{
    QTest::addColumn<QString>("blocks");
    QTest::addColumn<double>("threshold");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("events");
    // Blocks: a digit is that many tenths of a second of silence, minus is a tenth that lacks one frame, L is a loud
    // tenth (-20 dBFS), C configures anew. Events are written after the block they came with: S silence, R restored.
    QTest::newRow("a frame too early") << "9-" << -60.0 << 1 << "9-";
    QTest::newRow("on time, once") << "91999" << -60.0 << 1 << "91S999";
    QTest::newRow("restored once") << "91LL91" << -60.0 << 1 << "91SLRL91S";
    QTest::newRow("short dip") << "9L9L" << -60.0 << 1 << "9L9L";
    QTest::newRow("never") << "999L" << -60.0 << 0 << "999L";
    QTest::newRow("quiet at the threshold") << "LLLLLLLLLL" << 20 * std::log10(3276 / 32768.0) << 1 << "LLLLLLLLLLS";
    QTest::newRow("configured anew while silent") << "91CL9C9" << -60.0 << 1 << "91SCL9C9";
}

void TestLevelAnalyzer::silence()
{
    QFETCH(double, threshold);
    QFETCH(int, seconds);
    QFETCH(QString, blocks);
    LevelAnalyzer analyzer;
    analyzer.configure({44100, 1});
    analyzer.setSilence(threshold, seconds);
    QString log;
    connect(&analyzer, &LevelAnalyzer::silenceDetected, this, [&](int value) { log += value == seconds ? 'S' : '?'; });
    connect(&analyzer, &LevelAnalyzer::audioRestored, this, [&] { log += 'R'; });
    for (const QChar block : blocks) {
        log += block;
        if (block == 'C')
            analyzer.configure({44100, 1});
        else if (block == 'L')
            analyzer.process(bytesOf(Samples(4410, 3276)));
        else
            analyzer.process(bytesOf(Samples(block == '-' ? 4409 : 4410 * block.digitValue(), 0)));
    }
    QTEST(log, "events");
}

// However the audio came in, its 25 chunks take half a second to be shown.
void TestLevelAnalyzer::releasesSteadily()
{
    LevelAnalyzer analyzer;
    QSignalSpy shown(&analyzer, &LevelAnalyzer::levelChanged);
    QElapsedTimer clock;
    clock.start();
    analyzer.process(bytesOf(Samples(882 * 2 * 25, 1000)));
    QTRY_COMPARE(shown.size(), 25);
    QVERIFY2(clock.elapsed() >= 470, qPrintable(QString::number(clock.elapsed())));
}

QTEST_GUILESS_MAIN(TestLevelAnalyzer)
#include "tst_levelanalyzer.moc"
