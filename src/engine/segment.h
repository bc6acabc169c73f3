#pragma once

#include <QDateTime>

/// Where one recording file ends and the next begins.
namespace Segment {
/// End of the segment that starts at `start` (local time), always later than it; invalid when splitMinutes is below 1:
/// recordings are then not split.
///
/// Aligned to the clock, segments end on multiples of their length since midnight; the grid restarts at every midnight.
/// When the clock is put forward or back, a segment never outgrows its length, and the next boundary is on the grid
/// again.
QDateTime end(const QDateTime& start, int splitMinutes, bool alignToClock);
} // namespace Segment
