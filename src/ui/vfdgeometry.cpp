#include "ui/vfdgeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Margin = 14;
constexpr double ClockGap = 16;
constexpr double Intervals = VfdGeometry::ScalePoints.size() - 1;

double segmentPosition(int segment)
{
    return (segment + 1.0) / VfdGeometry::Segments;
}

} // namespace

VfdGeometry::Layout VfdGeometry::layout(int widgetWidth)
{
    const double width = widgetWidth - 2 * Margin;
    const double clockWidth = std::min(0.4 * width, 232.0);
    return {
        .clock = QRectF(Margin, 11, clockWidth, 54),
        .meter = QRectF(Margin + clockWidth + ClockGap, 11, width - clockWidth - ClockGap, 54),
        .status = QRectF(Margin, 74, width, 16),
        .schedule = QRectF(Margin, 98, width, 20),
        .bottom = QRectF(Margin, 128, width, 14),
    };
}

double VfdGeometry::position(double db)
{
    if (!(db > FloorDb))
        return 0.0;
    const auto* const upper = std::upper_bound(ScalePoints.begin(), ScalePoints.end(), db);
    if (upper == ScalePoints.end())
        return 1.0;
    const double lower = *(upper - 1);
    return (double(upper - 1 - ScalePoints.begin()) + (db - lower) / (*upper - lower)) / Intervals;
}

VfdGeometry::Zone VfdGeometry::zone(int segment)
{
    const double at = segmentPosition(segment);
    return at > position(-1) ? Zone::Red : at > position(-5) ? Zone::Amber : Zone::Bright;
}

int VfdGeometry::litSegments(double db)
{
    const double reached = position(db);
    int lit = 0;
    while (lit < Segments && reached >= segmentPosition(lit))
        ++lit;
    return lit;
}

int VfdGeometry::holdSegment(double db)
{
    return db > FloorDb ? std::clamp(int(std::floor(position(db) * Segments)), 0, Segments - 1) : -1;
}

VfdGeometry::Span VfdGeometry::segmentSpan(int segment, double barWidth)
{
    const double width = (barWidth - SegmentGap * (Segments - 1)) / Segments;
    const double left = segment * (width + SegmentGap);
    return {left, left + width};
}

VfdGeometry::Lights VfdGeometry::lights(double barDb, double holdDb)
{
    const int lit = litSegments(barDb);
    const int hold = holdSegment(holdDb);
    return {lit, hold < lit ? -1 : hold};
}
