// A repaint of the display panel's meter at 900 x 158, in the raster engine that all platforms use for widgets.

#include "ui/vfdpanel.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

/// The whole meter, both bars full.
void wholeMeter(benchmark::State& state, double devicePixelRatio)
{
    QImage image(QSize(900, 158) * devicePixelRatio, QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatio);
    VfdPainter panel;
    panel.setSurface({QSize(900, 158), devicePixelRatio, QFont(), Qt::black});
    const QRect meter = panel.layout().meter.toAlignedRect();
    const VfdGeometry::MeterLights lights{VfdGeometry::lights(0, 0), VfdGeometry::lights(0, 0)};
    for (auto _ : state) {
        QPainter painter(&image);
        painter.setClipRect(meter);
        panel.drawBackground(painter);
        panel.drawMeter(painter, lights, meter);
    }
}

/// What a new reading costs in a shown window, from the slot to the end of the paint event: the bars go up and down
/// by half the scale each time.
void reading(benchmark::State& state)
{
    VfdPanel panel;
    panel.resize(900, 158);
    panel.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        panel.resetLevels();
        panel.setLevels(-2, -12);
        QCoreApplication::sendPostedEvents();
    }
}

/// The clock moves once per second, and the lamp twice.
void clockAndLamp(benchmark::State& state)
{
    VfdPanel panel;
    panel.resize(900, 158);
    panel.setCodecText(QStringLiteral("mp3 192K STEREO"));
    panel.setSourceText(QStringLiteral("IN · default input device"));
    panel.show();
    QCoreApplication::processEvents();
    qint64 elapsed = 0;
    for (auto _ : state) {
        panel.setElapsedMs(elapsed += 1000);
        panel.setAutoMode(elapsed / 1000 % 2 == 0);
        QCoreApplication::sendPostedEvents();
    }
}

void wholePanel(benchmark::State& state)
{
    VfdPanel panel;
    panel.resize(900, 158);
    panel.show();
    QCoreApplication::processEvents();
    for (auto _ : state)
        panel.repaint();
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::RegisterBenchmark("whole meter", [](auto& state) {
        wholeMeter(state, 1.0);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("whole meter, 2x", [](auto& state) {
        wholeMeter(state, 2.0);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("reading", reading)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("clock and lamp", clockAndLamp)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("whole panel", wholePanel)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
