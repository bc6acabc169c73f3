#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;
class QPainterPath;

/// The colours and texts of the display panel, and how they shine. Sizes are in logical pixels.
namespace VfdLook {
inline constexpr QColor Background(0x06, 0x08, 0x09);
inline constexpr QColor Frame(0x26, 0x2e, 0x30);
inline constexpr QColor Red(0xff, 0x48, 0x38);
inline constexpr QColor AlarmRed(0xd0, 0x14, 0x14); ///< behind white letters
inline constexpr QColor Cyan(0x56, 0xf0, 0xe2);
inline constexpr QColor Amber(0xff, 0xb6, 0x42);
inline constexpr QColor Bright(0xe2, 0xf6, 0xf4);
inline constexpr QColor UnlitRed(0x40, 0x14, 0x12);
inline constexpr QColor DimCyan(0x12, 0x3a, 0x38);
inline constexpr QColor UnlitAmber(0x3e, 0x2c, 0x10);
inline constexpr QColor UnlitGrey(0x2c, 0x38, 0x38);

/// Legends and the less important texts: cyan that is still easy to read on the background.
inline const QColor Legend = Cyan.darker(190);
inline const QColor DarkCyan = Cyan.darker(140);

inline constexpr int LegendSize = 9;
inline constexpr double LegendSpacing = 1.2;
inline constexpr double LegendHeight = 10; ///< height of the row of legends above the meter and the clock

QColor withAlpha(QColor color, double alpha);

/// Draws the light around an outline, up to Reach. Slow, so only for what is drawn once.
inline constexpr double Reach = 4;
void drawGlow(QPainter& painter, const QPainterPath& outline, const QColor& color);

/// Draws one line of text at this side of the rectangle, and beyond the rectangle if it is longer.
void drawLine(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag side, const QColor& color, const QString& text);
/// Draws as much of the text as fits. \return the width that it took.
double drawElided(QPainter& painter, const QRectF& rect, Qt::TextElideMode mode, const QColor& color,
                  const QString& text);
} // namespace VfdLook
