#include "ui/vfdpainter.h"

#include "ui/vfdlook.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

using namespace VfdGeometry;
using namespace VfdLook;

namespace {

/// Legends and the less important texts: cyan that is still easy to read on the background.
const QColor Legend = Cyan.darker(190);
const QColor DarkCyan = Cyan.darker(140);

constexpr std::array<QColor, Zones> LitColors{Bright, Amber, Red};
constexpr std::array<QColor, Zones> UnlitColors{UnlitGrey, UnlitAmber, UnlitRed};
constexpr int HoldDarkening = 130;

// The rows of the meter and of the clock, from the top of their region.
constexpr double LegendHeight = 10;
constexpr std::array<double, 2> BarTops{14, 28};
constexpr double BarHeight = 11;
constexpr double ScaleTop = 41.5;
constexpr double FigureTop = 15;
constexpr double Glow = 3.5;
constexpr double HoldGlow = 2;

constexpr int LegendSize = 9;
constexpr double LegendSpacing = 1.2;
constexpr int TextSize = 12;
constexpr int UnlitTextLightening = 165;
constexpr double LampPadding = 7;
constexpr double LampSpacing = 6;
constexpr double TextSpacing = 14;
constexpr double SmallestSourceWidth = 40;

struct LampLook {
    const char* text = nullptr;
    QColor lit;
    QColor unlit;
};
constexpr std::array<LampLook, VfdPainter::LampCount> LampLooks{{
    {QT_TRANSLATE_NOOP("VfdPanel", "REC"), Red, UnlitRed},
    {QT_TRANSLATE_NOOP("VfdPanel", "AUTO"), Amber, UnlitAmber},
    {QT_TRANSLATE_NOOP("VfdPanel", "TRIG"), Amber, UnlitAmber},
    {QT_TRANSLATE_NOOP("VfdPanel", "CLIP"), Red, UnlitRed},
}};

/// Keeps all drawing, glow included, inside one region and puts the painter back afterwards.
class RegionPainter {
public:
    RegionPainter(QPainter& painter, const QRectF& region) : m_painter(painter)
    {
        m_painter.save();
        m_painter.setClipRect(region, Qt::IntersectClip);
        m_painter.setRenderHint(QPainter::Antialiasing);
    }
    ~RegionPainter() { m_painter.restore(); }
    Q_DISABLE_COPY_MOVE(RegionPainter)

private:
    QPainter& m_painter;
};

void drawLine(QPainter& painter, const QRectF& rect, Qt::AlignmentFlag side, const QColor& color, const QString& text)
{
    painter.setPen(color);
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

/// \return the width that it took
double drawElided(QPainter& painter, const QRectF& rect, Qt::TextElideMode mode, const QColor& color,
                  const QString& text)
{
    const QFontMetricsF metrics(painter.font());
    const QString fitting = metrics.elidedText(text, mode, rect.width());
    drawLine(painter, rect, Qt::AlignLeft, color, fitting);
    return metrics.horizontalAdvance(fitting);
}

} // namespace

void VfdPainter::setSurface(const Surface& surface)
{
    if (surface == m_surface && !m_background.isNull())
        return;
    m_surface = surface;
    m_layout = VfdGeometry::layout(surface.size.width());
    for (int i = 0; i < Segments; ++i) {
        const QColor color = LitColors[size_t(zone(i))];
        const QSize segment = segmentRect(0, i).size();
        m_lit[size_t(i)] = segmentSprite(segment, color, Glow);
        m_held[size_t(i)] = segmentSprite(segment, color.darker(HoldDarkening), HoldGlow);
    }
    const QFontMetricsF legend(font(LegendSize, LegendSpacing));
    m_todayWidth = std::ceil(legend.horizontalAdvance(tr("TODAY"))) + 9;
    for (size_t i = 0; i < LampLooks.size(); ++i) {
        m_lampWidths[i] = std::ceil(legend.horizontalAdvance(tr(LampLooks[i].text))) + 2 * LampPadding;
        for (const bool lit : {false, true})
            m_lamps[i][lit] = renderLamp(Lamp(i), lit);
    }
    m_clock.setSurface(m_layout.clock.adjusted(4, FigureTop, -4, -2), surface.devicePixelRatio);
    m_background = renderBackground();
}

QFont VfdPainter::font(int pixelSize, double spacing) const
{
    QFont font = m_surface.font;
    font.setPixelSize(pixelSize);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    if (spacing > 0)
        font.setWeight(QFont::DemiBold);
    return font;
}

// --- the ground ------------------------------------------------------------------------------------------------

QPixmap VfdPainter::renderBackground() const
{
    const double ratio = m_surface.devicePixelRatio;
    QPixmap pixmap((QSizeF(m_surface.size) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(m_surface.surroundings);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Frame, 1));
    painter.setBrush(Background);
    painter.drawRoundedRect(QRectF(QPointF(), QSizeF(m_surface.size)).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);

    painter.setFont(font(LegendSize, LegendSpacing));
    QRectF row = m_layout.clock;
    row.setHeight(LegendHeight);
    drawLine(painter, row, Qt::AlignLeft, Legend, tr("ELAPSED"));
    row = m_layout.meter;
    row.setHeight(LegendHeight);
    drawLine(painter, row, Qt::AlignLeft, Legend, tr("PEAK LEVEL METER"));
    drawLine(painter, row, Qt::AlignRight, Legend, tr("dBFS"));
    drawLine(painter, m_layout.schedule.adjusted(0, 3, 0, 0), Qt::AlignLeft, Legend, tr("TODAY"));
    renderMeterGround(painter);
    renderScale(painter);
    painter.end();
    pixmap.setDevicePixelRatio(1.0); // it is copied pixel by pixel
    return pixmap;
}

void VfdPainter::renderMeterGround(QPainter& painter) const
{
    const std::array<QString, 2> channels{tr("L"), tr("R")};
    for (int channel = 0; channel < 2; ++channel) {
        const QRectF mark(m_layout.meter.left() - 11, m_layout.meter.top() + BarTops[size_t(channel)], 8, BarHeight);
        drawLine(painter, mark, Qt::AlignLeft, Legend, channels[size_t(channel)]);
    }
    painter.save();
    painter.scale(1 / m_surface.devicePixelRatio, 1 / m_surface.devicePixelRatio);
    for (int i = 0; i < Segments; ++i) {
        for (int channel = 0; channel < 2; ++channel)
            painter.fillRect(segmentRect(channel, i), UnlitColors[size_t(zone(i))]);
    }
    painter.restore();
}

void VfdPainter::renderScale(QPainter& painter) const
{
    painter.setFont(font(LegendSize));
    const double top = m_layout.meter.top() + ScaleTop;
    for (const double db : ScalePoints) {
        const QColor color = db >= -1 ? Red.darker(125) : db >= -5 ? Amber.darker(140) : Legend;
        const double x = m_layout.meter.left() + position(db) * m_layout.meter.width();
        const double ratio = m_surface.devicePixelRatio;
        painter.fillRect(QRectF(toDevice(x - 0.5) / ratio, top, qMax(1, toDevice(1)) / ratio, 2), color);
        const QString text = db < 0 ? QChar(0x2212) + QString::number(-db) : QString::number(db);
        drawLine(painter, QRectF(x - 20, top + 3, 40, LegendHeight), Qt::AlignHCenter, color, text);
    }
}

void VfdPainter::drawBackground(QPainter& painter) const
{
    painter.save();
    painter.scale(1 / m_surface.devicePixelRatio, 1 / m_surface.devicePixelRatio);
    painter.drawPixmap(0, 0, m_background);
    painter.restore();
}

// --- the clock -------------------------------------------------------------------------------------------------

void VfdPainter::drawClock(QPainter& painter, qint64 ms)
{
    const RegionPainter region(painter, m_layout.clock);
    m_clock.draw(painter, ms);
}

// --- the meter -------------------------------------------------------------------------------------------------

/// In device pixels: edges between pixels would be blurred, and gaps that differ by one would be seen.
QRect VfdPainter::segmentRect(int channel, int segment) const
{
    const Span span = segmentSpan(segment, m_layout.meter.width());
    const double x = m_layout.meter.left();
    const int left = toDevice(x + span.left);
    const int gap = qMax(1, toDevice(SegmentGap));
    const int right = segment + 1 < Segments ? toDevice(x + segmentSpan(segment + 1, m_layout.meter.width()).left) - gap
                                             : toDevice(x + span.right);
    const int top = toDevice(m_layout.meter.top() + BarTops[size_t(channel)]);
    return {left, top, right - left, toDevice(BarHeight)};
}

VfdPainter::Sprite VfdPainter::segmentSprite(const QSize& segment, const QColor& color, double glow) const
{
    constexpr double GlowAtEdge = 0.26;
    const int reach = toDevice(glow);
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

QRectF VfdPainter::meterChange(const MeterLights& from, const MeterLights& to) const
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
    const double top = m_layout.meter.top() + BarTops.front() - Glow - 1;
    const double bottom = m_layout.meter.top() + BarTops.back() + BarHeight + Glow + 1;
    return QRectF(QPointF(left, top), QPointF(right, bottom)) & m_layout.meter;
}

void VfdPainter::drawMeter(QPainter& painter, const MeterLights& lights, const QRect& dirty) const
{
    const RegionPainter region(painter, m_layout.meter);
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
}

// --- the rows below --------------------------------------------------------------------------------------------

QRectF VfdPainter::lampRect(Lamp lamp, const Lamps& lamps) const
{
    if (!lamps[lamp])
        return {};
    double x = m_layout.status.left();
    for (size_t i = 0; i < lamp; ++i) {
        if (lamps[i])
            x += m_lampWidths[i] + LampSpacing;
    }
    return {x, m_layout.status.top(), m_lampWidths[lamp], m_layout.status.height()};
}

QPixmap VfdPainter::renderLamp(Lamp lamp, bool lit) const
{
    const double ratio = m_surface.devicePixelRatio;
    const double height = m_layout.status.height();
    const auto& [text, litColor, unlitColor] = LampLooks[lamp];
    QPixmap pixmap(toDevice(m_lampWidths[lamp] + 2 * Reach), toDevice(height));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio, ratio);
    const QRectF body = QRectF(Reach, 0, m_lampWidths[lamp], height).adjusted(0.5, 1.5, -0.5, -1.5);
    QPainterPath outline;
    outline.addRoundedRect(body, 3, 3);
    if (lit)
        shed(painter, outline, litColor);
    painter.setPen(QPen(lit ? litColor : unlitColor, 1));
    painter.setBrush(lit ? litColor : Background);
    painter.drawPath(outline);
    painter.setFont(font(LegendSize, LegendSpacing));
    // The spacing behind the last letter would push the text off the middle.
    drawLine(painter, body.adjusted(LegendSpacing, 0, 0, 0), Qt::AlignHCenter,
             lit ? Background : unlitColor.lighter(UnlitTextLightening), tr(text));
    return pixmap;
}

void VfdPainter::drawStatus(QPainter& painter, const Lamps& lamps, const QString& codec, const QString& source) const
{
    const RegionPainter region(painter, m_layout.status);
    const double ratio = m_surface.devicePixelRatio;
    QRectF rest = m_layout.status;
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    for (size_t i = 0; i < lamps.size(); ++i) {
        if (!lamps[i])
            continue;
        const QRectF rect = lampRect(Lamp(i), lamps);
        painter.drawPixmap(toDevice(rect.left() - Reach), toDevice(rect.top()), m_lamps[i][*lamps[i]]);
        rest.setLeft(rect.right() + TextSpacing);
    }
    painter.restore();
    painter.setFont(font(TextSize));
    const QString codecText = codec.isEmpty() ? tr("NO CODEC") : codec;
    rest.setLeft(rest.left() + drawElided(painter, rest, Qt::ElideRight, Cyan, codecText) + TextSpacing);
    if (rest.width() > SmallestSourceWidth)
        drawElided(painter, rest, Qt::ElideRight, DarkCyan, source);
}

QRectF VfdPainter::hourCell(int hour) const
{
    constexpr double Gap = 2;
    constexpr int Hours = 24;
    const double left = m_layout.schedule.left() + m_todayWidth;
    const double pitch = (m_layout.schedule.right() + Gap - left) / Hours;
    const double ratio = m_surface.devicePixelRatio;
    const double from = toDevice(left + hour * pitch) / ratio;
    const double to = toDevice(left + (hour + 1) * pitch - Gap) / ratio;
    return {from, m_layout.schedule.top() + 4, to - from, m_layout.schedule.height() - 5};
}

void VfdPainter::drawSchedule(QPainter& painter, const Today& today) const
{
    const RegionPainter region(painter, m_layout.schedule);
    painter.setFont(font(LegendSize));
    for (int hour = 0; hour < today.scheduled.size(); ++hour) {
        const QRectF cell = hourCell(hour);
        const bool on = today.scheduled.testBit(hour);
        const bool now = hour == today.hour;
        if (on) {
            painter.fillRect(cell, DarkCyan);
        } else {
            painter.setPen(QPen(DimCyan, 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
        }
        if (now) {
            painter.setPen(QPen(Amber, 1));
            painter.setBrush(on ? Cyan : DimCyan);
            painter.drawRect(cell.adjusted(0.5, 0.5, -0.5, -0.5));
            painter.setBrush(Amber);
            const double middle = cell.center().x();
            painter.setPen(Qt::NoPen);
            painter.drawPolygon(
                QPolygonF({{middle - 4, cell.top() - 4}, {middle + 4, cell.top() - 4}, {middle, cell.top()}}));
        }
        drawLine(painter, cell, Qt::AlignHCenter,
                 on    ? Background
                 : now ? Bright
                       : Legend,
                 QStringLiteral("%1").arg(hour, 2, 10, QLatin1Char('0')));
    }
}

void VfdPainter::drawBottom(QPainter& painter, const QString& disk, const QString& file) const
{
    const RegionPainter region(painter, m_layout.bottom);
    painter.setFont(font(TextSize));
    QRectF rest = m_layout.bottom;
    rest.setWidth(rest.width() / 2);
    const double taken = drawElided(painter, rest, Qt::ElideRight, DarkCyan, tr("DISK %1").arg(disk));
    rest = m_layout.bottom;
    rest.setLeft(rest.left() + taken + 2 * TextSpacing);
    drawElided(painter, rest, Qt::ElideMiddle, Cyan, file);
}
