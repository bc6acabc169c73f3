// What a block of captured audio costs beside the usual libraries: conversion beside libswresample, rate conversion
// beside libsamplerate's linear converter. Blocks of 10 ms at 48 kHz, stereo.

#include "ratioreporter.h"

#include "capture/linearresampler.h"
#include "capture/pcmconvert.h"

#include <cmath>
#include <random>
#include <samplerate.h>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace {

constexpr int Rate = 48000;
constexpr int Frames = Rate / 100;
constexpr int Blocks = 100; ///< one second, so that neither branch predictor nor cache sees one block only

/// Noise with the level and the peaks of programme: -16 dBFS RMS, peaks reach -2 dBFS.
std::vector<float> programme()
{
    std::mt19937 random(1);
    std::normal_distribution<float> noise(0.0F, 0.16F);
    std::vector<float> samples(2 * Frames * Blocks);
    for (float& sample : samples)
        sample = std::clamp(noise(random), -0.8F, 0.8F);
    return samples;
}

/// Calls convert(block number) for one block after another and counts the samples.
template <class Convert>
void runBlocks(benchmark::State& state, Convert convert)
{
    int block = 0;
    for (auto _ : state) {
        convert(block);
        block = (block + 1) % Blocks;
    }
    state.SetItemsProcessed(state.iterations() * Frames * 2);
}

/// \param db gain; at +6 dB about five samples in a thousand are beyond the threshold.
void convert(benchmark::State& state, double db)
{
    const std::vector<float> in = programme();
    quint64 overs = 0;
    const GainStage stage{GainStage::factorFromDb(db), true, &overs};
    runBlocks(state, [&](int block) {
        const auto* data = reinterpret_cast<const uchar*>(in.data() + block * Frames * 2);
        benchmark::DoNotOptimize(convertToS16(data, Frames * 2 * qint64(sizeof(float)), 2, 32, true, 2, stage));
    });
    state.counters["overs"] = benchmark::Counter(double(overs), benchmark::Counter::kAvgIterations);
}

void swrConvert(benchmark::State& state)
{
    const std::vector<float> in = programme();
    std::vector<qint16> out(2 * Frames);
    SwrContext* swr = nullptr;
    AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
    swr_alloc_set_opts2(&swr, &stereo, AV_SAMPLE_FMT_S16, Rate, &stereo, AV_SAMPLE_FMT_FLT, Rate, 0, nullptr);
    if (swr_init(swr) < 0)
        state.SkipWithError("libswresample refuses");
    runBlocks(state, [&](int block) {
        const auto* data = reinterpret_cast<const uchar*>(in.data() + block * Frames * 2);
        auto* target = reinterpret_cast<uchar*>(out.data());
        swr_convert(swr, &target, Frames, &data, Frames);
        benchmark::ClobberMemory();
    });
    swr_free(&swr);
}

void resample(benchmark::State& state)
{
    const std::vector<float> in = programme();
    QByteArray pcm = convertToS16(reinterpret_cast<const uchar*>(in.data()), qint64(in.size() * sizeof(float)), 2, 32,
                                  true, 2, GainStage{});
    LinearResampler resampler;
    resampler.init(2, Rate, 44100);
    runBlocks(state, [&](int block) {
        const auto cut = QByteArray::fromRawData(pcm.constData() + block * Frames * 4, Frames * 4);
        benchmark::DoNotOptimize(resampler.process(cut));
    });
}

void srcLinear(benchmark::State& state)
{
    const std::vector<float> in = programme();
    std::vector<float> out(2 * Frames);
    int error = 0;
    SRC_STATE* src = src_new(SRC_LINEAR, 2, &error);
    SRC_DATA data{};
    data.output_frames = Frames;
    data.data_out = out.data();
    data.src_ratio = 44100.0 / Rate;
    runBlocks(state, [&](int block) {
        data.data_in = in.data() + block * Frames * 2;
        data.input_frames = Frames;
        if (src_process(src, &data) != 0)
            state.SkipWithError("libsamplerate refuses");
        benchmark::ClobberMemory();
    });
    src_delete(src);
}

} // namespace

int main(int argc, char** argv)
{
    constexpr int Repetitions = 7;
    benchmark::RegisterBenchmark("convert", [](auto& state) { convert(state, 3.0); })->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("convert, loud", [](auto& state) { convert(state, 6.0); })->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("swr_convert", swrConvert)->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("resample", resample)->Repetitions(Repetitions);
    benchmark::RegisterBenchmark("src_process", srcLinear)->Repetitions(Repetitions);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio("float stereo to 16 bits with gain, limiter and counting", "convert", "swr_convert");
    reporter.printRatio("the same with limited peaks", "convert, loud", "swr_convert");
    reporter.printRatio("48000 to 44100 Hz", "resample", "src_process");
}
