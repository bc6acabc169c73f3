#include "ui/vfdlook.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

QColor VfdLook::withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

void VfdLook::shed(QPainter& painter, const QPainterPath& outline, const QColor& color)
{
    constexpr std::array<std::pair<double, double>, 3> Halos{{{2 * Reach, 0.06}, {5.0, 0.09}, {2.6, 0.14}}};
    painter.setBrush(Qt::NoBrush);
    for (const auto& [width, alpha] : Halos) {
        painter.setPen(QPen(withAlpha(color, alpha), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(outline);
    }
}
