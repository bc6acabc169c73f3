#include "ui/vfdlook.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <array>

QColor VfdLook::withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

void VfdLook::drawGlow(QPainter& painter, const QPainterPath& outline, const QColor& color)
{
    constexpr std::array<std::pair<double, double>, 3> Halos{{{2 * Reach, 0.06}, {5.0, 0.09}, {2.6, 0.14}}};
    painter.setBrush(Qt::NoBrush);
    for (const auto& [width, alpha] : Halos) {
        painter.setPen(QPen(withAlpha(color, alpha), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(outline);
    }
}

void VfdLook::drawLine(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag side, const QColor& color,
                       const QString& text)
{
    painter.setPen(color);
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

double VfdLook::drawElided(QPainter& painter, const QRectF& rect, Qt::TextElideMode mode, const QColor& color,
                           const QString& text)
{
    const QFontMetricsF metrics(painter.font());
    const QString fitting = metrics.elidedText(text, mode, rect.width());
    drawLine(painter, rect, Qt::AlignLeft, color, fitting);
    return metrics.horizontalAdvance(fitting);
}
