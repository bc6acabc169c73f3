#pragma once

#include <QRectF>

#include <array>

/// Where things are on the display panel: pure arithmetic, in logical pixels.
namespace VfdGeometry {

struct Layout {
    QRectF clock;
    QRectF meter;
    QRectF status;
    QRectF schedule;
    QRectF bottom;

    friend bool operator==(const Layout&, const Layout&) = default;
};
/// The heights are fixed; the widths follow that of the widget.
Layout layout(int widgetWidth);

/// The labelled points of the meter's scale in dBFS, evenly spaced: the upper 10 dB take more than half of it.
inline constexpr std::array<double, 10> ScalePoints{-40, -30, -20, -15, -10, -7, -5, -3, -1, 0};
inline constexpr double FloorDb = ScalePoints.front();

/// Position of a level on the scale: 0 at -40 dB and below, 1 at 0 dB and above.
double position(double db);

inline constexpr int Segments = 28;
inline constexpr double SegmentGap = 1.6;

enum class Zone { Bright, Amber, Red };
inline constexpr int Zones = 3;
/// Colour of a segment: amber above -5 dB, red above -1 dB. Segment i stands for the position (i + 1) / Segments.
Zone zone(int segment);

int litSegments(double db);
/// The segment that shows the peak hold; -1 at -40 dB and below.
int holdSegment(double db);

/// The segment's left and right edge in a bar that starts at 0 and has this width.
struct Span {
    double left;
    double right;
};
Span segmentSpan(int segment, double barWidth);

/// What a channel of the meter shows.
struct Lights {
    int lit = 0;
    int hold = -1; ///< -1 when there is none, and when the bar outshines it

    friend bool operator==(const Lights&, const Lights&) = default;
};
using MeterLights = std::array<Lights, 2>;
Lights lights(double barDb, double holdDb);

} // namespace VfdGeometry
