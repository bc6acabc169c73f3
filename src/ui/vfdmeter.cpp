#include "ui/vfdmeter.h"

#include "ui/vfdlook.h"

#include <QPainter>

using namespace VfdGeometry;
using namespace VfdLook;

namespace {

constexpr std::array<QColor, Zones> LitColors{Bright, Amber, Red};
constexpr std::array<QColor, Zones> UnlitColors{UnlitGrey, UnlitAmber, UnlitRed};
constexpr int HoldDarkening = 130;

// The rows, from the top of the room.
constexpr std::array<double, 2> BarTops{14, 28};
constexpr double BarHeight = 11;
constexpr double ScaleTop = 41.5;
constexpr double Glow = 3.5;
constexpr double HoldGlow = 2;

} // namespace

void VfdMeter::setSurface(const QRectF& room, const VfdSurface& surface)
{
    m_room = room;
    m_surface = surface;
    for (int i = 0; i < Segments; ++i) {
        const QColor color = LitColors[size_t(zone(i))];
        const QSize segment = segmentRect(0, i).size();
        m_lit[size_t(i)] = segmentSprite(segment, color, Glow);
        m_held[size_t(i)] = segmentSprite(segment, color.darker(HoldDarkening), HoldGlow);
    }
}

void VfdMeter::drawGround(QPainter& painter) const
{
    painter.setFont(m_surface.font(LegendSize, LegendSpacing));
    QRectF row = m_room;
    row.setHeight(LegendHeight);
    drawLine(painter, row, Qt::AlignLeft, Legend, tr("PEAK LEVEL METER"));
    drawLine(painter, row, Qt::AlignRight, Legend, tr("dBFS"));
    const std::array<QString, 2> channels{tr("L"), tr("R")};
    for (int channel = 0; channel < 2; ++channel) {
        const QRectF mark(m_room.left() - 11, m_room.top() + BarTops[size_t(channel)], 8, BarHeight);
        drawLine(painter, mark, Qt::AlignLeft, Legend, channels[size_t(channel)]);
    }
    drawUnlitSegments(painter);
    drawScale(painter);
}

void VfdMeter::drawUnlitSegments(QPainter& painter) const
{
    painter.save();
    painter.scale(1 / m_surface.devicePixelRatio, 1 / m_surface.devicePixelRatio);
    for (int i = 0; i < Segments; ++i) {
        for (int channel = 0; channel < 2; ++channel)
            painter.fillRect(segmentRect(channel, i), UnlitColors[size_t(zone(i))]);
    }
    painter.restore();
}

void VfdMeter::drawScale(QPainter& painter) const
{
    painter.setFont(m_surface.font(LegendSize));
    const double top = m_room.top() + ScaleTop;
    for (const double db : ScalePoints) {
        const QColor color = db >= -1 ? Red.darker(125) : db >= -5 ? Amber.darker(140) : Legend;
        const double x = m_room.left() + position(db) * m_room.width();
        const double ratio = m_surface.devicePixelRatio;
        painter.fillRect(QRectF(m_surface.toDevice(x - 0.5) / ratio, top, qMax(1, m_surface.toDevice(1)) / ratio, 2),
                         color);
        const QString text = db < 0 ? QChar(0x2212) + QString::number(-db) : QString::number(db);
        drawLine(painter, QRectF(x - 20, top + 3, 40, LegendHeight), Qt::AlignHCenter, color, text);
    }
}

/// In device pixels: edges between pixels would be blurred, and gaps that differ by one would be seen.
QRect VfdMeter::segmentRect(int channel, int segment) const
{
    const Span span = segmentSpan(segment, m_room.width());
    const double x = m_room.left();
    const int left = m_surface.toDevice(x + span.left);
    const int gap = qMax(1, m_surface.toDevice(SegmentGap));
    const int right = segment + 1 < Segments
                          ? m_surface.toDevice(x + segmentSpan(segment + 1, m_room.width()).left) - gap
                          : m_surface.toDevice(x + span.right);
    const int top = m_surface.toDevice(m_room.top() + BarTops[size_t(channel)]);
    return {left, top, right - left, m_surface.toDevice(BarHeight)};
}

VfdMeter::Sprite VfdMeter::segmentSprite(const QSize& segment, const QColor& color, double glow) const
{
    constexpr double GlowAtEdge = 0.26;
    const int reach = m_surface.toDevice(glow);
    QPixmap pixels(segment + QSize(2 * reach, 2 * reach));
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withAlpha(color, GlowAtEdge / reach));
    const QRectF body(QPointF(reach, reach), QSizeF(segment));
    for (int step = reach; step > 0; --step)
        painter.drawRoundedRect(body.adjusted(-step, -step, step, step), step, step);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(body, color);
    return {pixels, QPoint(-reach, -reach)};
}

QRectF VfdMeter::change(const MeterLights& from, const MeterLights& to) const
{
    int first = Segments;
    int last = -1;
    const auto include = [&](int begin, int end) {
        if (begin < end) {
            first = qMin(first, begin);
            last = qMax(last, end - 1);
        }
    };
    for (size_t channel = 0; channel < from.size(); ++channel) {
        const auto& [oldLit, oldHold] = from[channel];
        const auto& [newLit, newHold] = to[channel];
        include(qMin(oldLit, newLit), qMax(oldLit, newLit));
        if (oldHold != newHold) {
            for (const int hold : {oldHold, newHold})
                include(qMax(0, hold), hold + 1);
        }
    }
    if (last < 0)
        return {};
    const double ratio = m_surface.devicePixelRatio;
    const double left = segmentRect(0, first).left() / ratio - Glow - 1;
    const double right = (segmentRect(0, last).right() + 1) / ratio + Glow + 1;
    const double top = m_room.top() + BarTops.front() - Glow - 1;
    const double bottom = m_room.top() + BarTops.back() + BarHeight + Glow + 1;
    return QRectF(QPointF(left, top), QPointF(right, bottom)) & m_room;
}

void VfdMeter::draw(QPainter& painter, const MeterLights& lights, const QRect& dirty) const
{
    painter.save();
    const double ratio = m_surface.devicePixelRatio;
    painter.scale(1 / ratio, 1 / ratio);
    const QRect seen = QRectF(QPointF(dirty.topLeft()) * ratio, QSizeF(dirty.size()) * ratio).toAlignedRect();
    const auto draw = [&](int channel, int segment, const Sprite& sprite) {
        const QRect target(segmentRect(channel, segment).topLeft() + sprite.offset, sprite.pixels.size());
        if (target.intersects(seen))
            painter.drawPixmap(target.topLeft(), sprite.pixels);
    };
    for (int channel = 0; channel < 2; ++channel) {
        const auto& [lit, hold] = lights[size_t(channel)];
        for (int i = 0; i < lit; ++i)
            draw(channel, i, m_lit[size_t(i)]);
        if (hold >= 0)
            draw(channel, hold, m_held[size_t(hold)]);
    }
    painter.restore();
}
