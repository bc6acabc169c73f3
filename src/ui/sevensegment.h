#pragma once

#include <QPainterPath>

/// The figures of the clock as outlines, so that they look the same on every machine, whatever its fonts.
namespace SevenSegment {

/// The lit segments of '0' to '9' or the two dots of ':' in this cell; empty for any other character.
QPainterPath figure(QChar character, const QRectF& cell);
/// All segments of the figure for this character, lit or not.
QPainterPath ghost(QChar character, const QRectF& cell);

} // namespace SevenSegment
