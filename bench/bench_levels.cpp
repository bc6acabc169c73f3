// Level analysis beside reading the same memory once (as memcmp does), in bytes per second.

#include "ratioreporter.h"

#include "engine/levelanalyzer.h"

#include <QCoreApplication>

#include <cstring>
#include <random>

namespace {

QByteArray noise(qsizetype samples)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> uniform(-20000, 20000);
    QByteArray pcm(samples * 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < samples; ++i) {
        const auto sample = qint16(uniform(random));
        std::memcpy(pcm.data() + 2 * i, &sample, sizeof sample);
    }
    return pcm;
}

/// Blocks of 100 ms at 48 kHz.
void analyze(benchmark::State& state, int channels)
{
    const QByteArray block = noise(4800 * channels);
    LevelAnalyzer analyzer;
    analyzer.configure({48000, channels});
    for (auto _ : state)
        analyzer.process(block);
    state.SetBytesProcessed(state.iterations() * block.size());
}

void readMemory(benchmark::State& state)
{
    const QByteArray block = noise(4800 * 2);
    const QByteArray same(block.constData(), block.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(std::memcmp(block.constData(), same.constData(), size_t(block.size())));
    state.SetBytesProcessed(state.iterations() * block.size());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // the analyzer's timer wants a thread of Qt's
    constexpr int Repetitions = 7;
    benchmark::RegisterBenchmark("mono", [](auto& state) { analyze(state, 1); })->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("stereo", [](auto& state) { analyze(state, 2); })->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("six channels", [](auto& state) { analyze(state, 6); })->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("memcmp", readMemory)->Repetitions(Repetitions);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio("level analysis, stereo", "stereo", "memcmp");
}
