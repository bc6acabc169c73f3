#include "ui/vfdschedule.h"

#include "ui/vfdlook.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace VfdLook;

void VfdSchedule::setSurface(const QRectF& room, const VfdSurface& surface)
{
    m_room = room;
    m_surface = surface;
    const QFontMetricsF legend(surface.font(LegendSize, LegendSpacing));
    m_legendWidth = std::ceil(legend.horizontalAdvance(tr("TODAY"))) + 9;
}

void VfdSchedule::drawGround(QPainter& painter) const
{
    painter.setFont(m_surface.font(LegendSize, LegendSpacing));
    drawLine(painter, m_room.adjusted(0, 3, 0, 0), Qt::AlignLeft, Legend, tr("TODAY"));
}

QRectF VfdSchedule::hourCell(int hour) const
{
    constexpr double Gap = 2;
    constexpr int Hours = 24;
    const double left = m_room.left() + m_legendWidth;
    const double pitch = (m_room.right() + Gap - left) / Hours;
    const double ratio = m_surface.devicePixelRatio;
    const double from = m_surface.toDevice(left + hour * pitch) / ratio;
    const double to = m_surface.toDevice(left + (hour + 1) * pitch - Gap) / ratio;
    return {from, m_room.top() + 4, to - from, m_room.height() - 5};
}

void VfdSchedule::draw(QPainter& painter, const Today& today) const
{
    painter.setFont(m_surface.font(LegendSize));
    for (int hour = 0; hour < today.scheduled.size(); ++hour)
        drawHour(painter, hour, today.scheduled.testBit(hour), hour == today.hour);
}

void VfdSchedule::drawHour(QPainter& painter, int hour, bool scheduled, bool current) const
{
    const QRectF cell = hourCell(hour);
    if (scheduled) {
        painter.fillRect(cell, DarkCyan);
    } else {
        painter.setPen(QPen(DimCyan, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
    }
    if (current) {
        painter.setPen(QPen(Amber, 1));
        painter.setBrush(scheduled ? Cyan : DimCyan);
        painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setBrush(Amber);
        const double middle = cell.center().x();
        painter.setPen(Qt::NoPen);
        painter.drawPolygon(
            QPolygonF({{middle - 4, cell.top() - 4}, {middle + 4, cell.top() - 4}, {middle, cell.top()}}));
    }
    const QColor& color = scheduled ? Background : current ? Bright : Legend;
    drawLine(painter, cell, Qt::AlignHCenter, color, QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0')));
}
