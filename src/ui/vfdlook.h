#pragma once

#include <QColor>

class QPainter;
class QPainterPath;

/// The colours of the display panel and how they shine.
namespace VfdLook {
inline constexpr QColor Background(0x06, 0x08, 0x09);
inline constexpr QColor Frame(0x26, 0x2e, 0x30);
inline constexpr QColor Red(0xff, 0x48, 0x38);
inline constexpr QColor Cyan(0x56, 0xf0, 0xe2);
inline constexpr QColor Amber(0xff, 0xb6, 0x42);
inline constexpr QColor Bright(0xe2, 0xf6, 0xf4);
inline constexpr QColor UnlitRed(0x40, 0x14, 0x12);
inline constexpr QColor DimCyan(0x12, 0x3a, 0x38);
inline constexpr QColor UnlitAmber(0x3e, 0x2c, 0x10);
inline constexpr QColor UnlitGrey(0x2c, 0x38, 0x38);

QColor withAlpha(QColor color, double alpha);

/// The light that an outline sheds around itself, up to Reach logical pixels. Slow: for what is drawn once.
inline constexpr double Reach = 4;
void shed(QPainter& painter, const QPainterPath& outline, const QColor& color);
} // namespace VfdLook
