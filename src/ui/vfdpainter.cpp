#include "ui/vfdpainter.h"

#include "ui/vfdlook.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace VfdLook;

namespace {

constexpr double FigureTop = 15; ///< of the clock, from the top of its region
constexpr int TextSize = 12;
constexpr double TextSpacing = 14;
constexpr double SmallestSourceWidth = 40;

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

} // namespace

void VfdPainter::setSurface(const VfdSurface& surface)
{
    if (surface == m_surface && !m_background.isNull())
        return;
    m_surface = surface;
    m_layout = VfdGeometry::layout(surface.size.width());
    m_clock.setSurface(m_layout.clock.adjusted(4, FigureTop, -4, -2), surface.devicePixelRatio);
    m_meter.setSurface(m_layout.meter, surface);
    m_lamps.setSurface(m_layout.status, surface);
    m_schedule.setSurface(m_layout.schedule, surface);
    m_background = renderBackground();
}

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

    painter.setFont(m_surface.font(LegendSize, LegendSpacing));
    QRectF row = m_layout.clock;
    row.setHeight(LegendHeight);
    drawLine(painter, row, Qt::AlignLeft, Legend, tr("ELAPSED"));
    m_schedule.drawGround(painter);
    m_meter.drawGround(painter);
    painter.end();
    pixmap.setDevicePixelRatio(1.0); // it is copied pixel by pixel
    return pixmap;
}

void VfdPainter::drawBackground(QPainter& painter) const
{
    painter.save();
    painter.scale(1 / m_surface.devicePixelRatio, 1 / m_surface.devicePixelRatio);
    painter.drawPixmap(0, 0, m_background);
    painter.restore();
}

void VfdPainter::drawClock(QPainter& painter, qint64 ms)
{
    const RegionPainter region(painter, m_layout.clock);
    m_clock.draw(painter, ms);
}

QRectF VfdPainter::meterChange(const VfdGeometry::MeterLights& from, const VfdGeometry::MeterLights& to) const
{
    return m_meter.change(from, to);
}

void VfdPainter::drawMeter(QPainter& painter, const VfdGeometry::MeterLights& lights, const QRect& dirty) const
{
    const RegionPainter region(painter, m_layout.meter);
    m_meter.draw(painter, lights, dirty);
}

void VfdPainter::drawStatus(QPainter& painter, const VfdLamps::States& lamps, const VfdWord& word, const QString& codec,
                            const QString& source) const
{
    const RegionPainter region(painter, m_layout.status);
    m_lamps.draw(painter, lamps);
    QRectF rest = m_layout.status;
    for (int i = 0; i < VfdLamps::Count; ++i) {
        if (lamps[size_t(i)])
            rest.setLeft(m_lamps.rect(VfdLamps::Lamp(i), lamps).right() + TextSpacing);
    }
    if (!word.text.isEmpty())
        rest.setLeft(rest.left() + drawWord(painter, rest, word) + TextSpacing);
    painter.setFont(m_surface.font(TextSize));
    const QString codecText = codec.isEmpty() ? tr("NO CODEC") : codec;
    rest.setLeft(rest.left() + drawElided(painter, rest, Qt::ElideRight, Cyan, codecText) + TextSpacing);
    if (rest.width() > SmallestSourceWidth)
        drawElided(painter, rest, Qt::ElideRight, DarkCyan, source);
}

/// White on red, to be seen from the door, or quietly. \return the width taken.
double VfdPainter::drawWord(QPainter& painter, const QRectF& rest, const VfdWord& word) const
{
    constexpr double Padding = 8;
    QFont font = m_surface.font(TextSize);
    font.setBold(true);
    painter.setFont(font);
    const double width = std::ceil(QFontMetricsF(font).horizontalAdvance(word.text)) + 2 * Padding;
    QRectF box = rest;
    box.setWidth(qMin(width, rest.width()));
    if (word.alarming) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(AlarmRed);
        painter.drawRoundedRect(box, 3, 3);
    }
    drawLine(painter, box, Qt::AlignHCenter, word.alarming ? QColor(Qt::white) : QColor(Bright), word.text);
    return box.width();
}

void VfdPainter::drawSchedule(QPainter& painter, const VfdSchedule::Today& today) const
{
    const RegionPainter region(painter, m_layout.schedule);
    m_schedule.draw(painter, today);
}

void VfdPainter::drawBottom(QPainter& painter, const QString& disk, bool diskLow, const QString& file) const
{
    const RegionPainter region(painter, m_layout.bottom);
    painter.setFont(m_surface.font(TextSize));
    QRectF rest = m_layout.bottom;
    rest.setWidth(rest.width() / 2);
    const double taken = drawElided(painter, rest, Qt::ElideRight, diskLow ? Red : DarkCyan, tr("DISK %1").arg(disk));
    rest = m_layout.bottom;
    rest.setLeft(rest.left() + taken + 2 * TextSpacing);
    drawElided(painter, rest, Qt::ElideMiddle, Cyan, file);
}
