#include "ui/vfdlamps.h"

#include "ui/vfdlook.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

using namespace VfdLook;

namespace {

constexpr int UnlitTextLightening = 165;
constexpr double Padding = 7;
constexpr double Spacing = 6;

struct Look {
    const char* text = nullptr;
    QColor lit;
    QColor unlit;
};
constexpr std::array<Look, VfdLamps::Count> Looks{{
    {QT_TRANSLATE_NOOP("VfdPanel", "REC"), Red, UnlitRed},
    {QT_TRANSLATE_NOOP("VfdPanel", "AUTO"), Amber, UnlitAmber},
    {QT_TRANSLATE_NOOP("VfdPanel", "TRIG"), Amber, UnlitAmber},
    {QT_TRANSLATE_NOOP("VfdPanel", "CLIP"), Red, UnlitRed},
}};

} // namespace

void VfdLamps::setSurface(const QRectF& room, const VfdSurface& surface)
{
    m_room = room;
    m_surface = surface;
    const QFontMetricsF legend(surface.font(LegendSize, LegendSpacing));
    for (size_t i = 0; i < Looks.size(); ++i) {
        m_widths[i] = std::ceil(legend.horizontalAdvance(tr(Looks[i].text))) + 2 * Padding;
        for (const bool lit : {false, true})
            m_pixmaps[i][lit] = render(Lamp(i), lit);
    }
}

QRectF VfdLamps::rect(Lamp lamp, const States& states) const
{
    if (!states[lamp])
        return {};
    double x = m_room.left();
    for (size_t i = 0; i < lamp; ++i) {
        if (states[i])
            x += m_widths[i] + Spacing;
    }
    return {x, m_room.top(), m_widths[lamp], m_room.height()};
}

QPixmap VfdLamps::render(Lamp lamp, bool lit) const
{
    const double ratio = m_surface.devicePixelRatio;
    const double height = m_room.height();
    const auto& [text, litColor, unlitColor] = Looks[lamp];
    QPixmap pixmap(m_surface.toDevice(m_widths[lamp] + 2 * Reach), m_surface.toDevice(height));
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio, ratio);
    const QRectF body = QRectF(Reach, 0, m_widths[lamp], height).adjusted(0.5, 1.5, -0.5, -1.5);
    QPainterPath outline;
    outline.addRoundedRect(body, 3, 3);
    if (lit)
        drawGlow(painter, outline, litColor);
    painter.setPen(QPen(lit ? litColor : unlitColor, 1));
    painter.setBrush(lit ? litColor : Background);
    painter.drawPath(outline);
    painter.setFont(m_surface.font(LegendSize, LegendSpacing));
    // The spacing behind the last letter would push the text off the middle.
    drawLine(painter, body.adjusted(LegendSpacing, 0, 0, 0), Qt::AlignHCenter,
             lit ? Background : unlitColor.lighter(UnlitTextLightening), tr(text));
    return pixmap;
}

void VfdLamps::draw(QPainter& painter, const States& states) const
{
    const double ratio = m_surface.devicePixelRatio;
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    for (size_t i = 0; i < states.size(); ++i) {
        if (!states[i])
            continue;
        const QRectF place = rect(Lamp(i), states);
        painter.drawPixmap(m_surface.toDevice(place.left() - Reach), m_surface.toDevice(place.top()),
                           m_pixmaps[i][*states[i]]);
    }
    painter.restore();
}
