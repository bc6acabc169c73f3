#include "engine/levelanalyzer.h"

#include "support/samples.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <cmath>

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

    using LevelsRows = Table<PcmFormat, Samples, QList<Levels>>; // expected: as magnitudes; 0 is the floor
    using SilenceRows = Table<int, QString>;

private Q_SLOTS:
    void levels_data()
    {
        const LevelsRows row;
        using All = QList<Levels>;
        row("full scale", PcmFormat{44100, 1}, Samples(882, -32768), All{Levels(4, 32768)});
        row("floor, left a little above", PcmFormat{99, 2}, Samples{33, -32}, All{{33, 0, 33, 0}});
        row("stereo, two chunks, partial frame", PcmFormat{100, 2}, Samples{3000, -4000, 0, 0, 1000, -7000, 1},
            All{{4000, 2500, 3000, 4000}, {7000, 5000, 1000, 7000}});
        row("three channels", PcmFormat{50, 3}, Samples{1000, -1000, 5000}, All{{5000, 3000, 1000, 5000}});
        row("no channels count as one", PcmFormat{100, 0}, Samples{1000, 7000, -700},
            All{{7000, 5000, 7000, 7000}, Levels(4, 700)});
    }
    void levels()
    {
        auto [format, samples, expected] = LevelsRows::fetch();
        for (Levels& levels : expected) {
            for (double& value : levels)
                value = value > 0 ? 20 * std::log10(value / 32768) : -60.0;
        }
        LevelAnalyzer analyzer;
        analyzer.configure(format);
        analyzer.process(bytesOf(samples));
        QCOMPARE(release(analyzer), expected);
    }

    void keepsTheNewest()
    {
        LevelAnalyzer analyzer;
        analyzer.configure({50, 1});
        Samples samples(700, 500);
        samples[100] = 1000;
        analyzer.process(bytesOf(samples));
        const QList<Levels> readings = release(analyzer);
        QCOMPARE(readings.size(), 600);
        QCOMPARE(readings[0][0], 20 * std::log10(1000 / 32768.0));
        analyzer.process(bytesOf(samples));
        analyzer.reset();
        QCOMPARE(release(analyzer).size(), 0);
    }

    void silence_data()
    {
        const SilenceRows row;
        // Blocks: a digit is that many tenths of a second of sound at the threshold, minus is a tenth that lacks one
        // frame, L is a loud tenth, C configures anew. What comes with a block follows it: S silence, R restored.
        row("a frame too early", 1, "9-");
        row("each event once", 1, "91S99LRL91S");
        row("short dip", 1, "9L9L");
        row("never", 0, "999L");
        row("configured anew while silent", 1, "91SCL9C9");
    }
    void silence()
    {
        const int seconds = std::get<0>(SilenceRows::fetch());
        const QString events = std::get<1>(SilenceRows::fetch());
        LevelAnalyzer analyzer;
        analyzer.configure({44100, 1});
        analyzer.setSilence(20 * std::log10(100 / 32768.0), seconds);
        QString log;
        connect(&analyzer, &LevelAnalyzer::silenceDetected, this,
                [&](int value) { log += value == seconds ? 'S' : '?'; });
        connect(&analyzer, &LevelAnalyzer::audioRestored, this, [&] { log += 'R'; });
        for (const QChar block : events) {
            if (block == 'S' || block == 'R')
                continue;
            log += block;
            if (block == 'C')
                analyzer.configure({44100, 1});
            else if (block == 'L')
                analyzer.process(bytesOf(Samples(4410, 101)));
            else
                analyzer.process(bytesOf(Samples(block == '-' ? 4409 : 4410 * block.digitValue(), 100)));
        }
        QCOMPARE(log, events);
    }

    // However the audio came in, its 25 chunks take half a second to be shown.
    void releasesSteadily()
    {
        LevelAnalyzer analyzer;
        QSignalSpy shown(&analyzer, &LevelAnalyzer::levelChanged);
        QElapsedTimer clock;
        clock.start();
        analyzer.process(bytesOf(Samples(882 * 2 * 25, 1000)));
        QTRY_COMPARE(shown.size(), 25);
        QVERIFY(clock.elapsed() >= 470);
    }

    // An idle logger must cost next to nothing, but between the blocks of a source the steps keep their pace.
    void restsOnlyWhenNothingComes()
    {
        LevelAnalyzer analyzer;
        const auto* const timer = analyzer.findChild<QTimer*>();
        QSignalSpy shown(&analyzer, &LevelAnalyzer::levelChanged);
        QVERIFY(!timer->isActive());
        for (int round = 1; round <= 2; ++round) {
            QElapsedTimer sinceBlock;
            sinceBlock.start();
            analyzer.process(bytesOf(Samples(882 * 2, 1000)));
            QTRY_COMPARE(shown.size(), round);
            QVERIFY(timer->isActive());
            QTRY_VERIFY(!timer->isActive());
            QVERIFY(sinceBlock.elapsed() >= 900);
            QCOMPARE(shown.size(), round);
        }
    }
};

QTEST_GUILESS_MAIN(TestLevelAnalyzer)
#include "tst_levelanalyzer.moc"
