#pragma once

#include "ui/vfdgeometry.h"
#include "ui/vfdsurface.h"

#include <QCoreApplication>
#include <QPixmap>

#include <array>

class QPainter;

/// The peak meter with its scale. The segments with their glow are drawn once for a surface and then copied.
class VfdMeter {
    Q_DECLARE_TR_FUNCTIONS(VfdPanel)
public:
    /// \param room for the bars, with the legends above and the scale below them; the channels' names are left of it.
    void setSurface(const QRectF& room, const VfdSurface& surface);
    /// Draws what never changes: legends, scale and the unlit segments.
    void drawGround(QPainter& painter) const;
    /// Draws the lit segments over the ground. \param dirty the part that must be drawn at least, in logical pixels.
    void draw(QPainter& painter, const VfdGeometry::MeterLights& lights, const QRect& dirty) const;
    /// The part to be repainted after the lights have changed; empty when nothing has.
    QRectF change(const VfdGeometry::MeterLights& from, const VfdGeometry::MeterLights& to) const;

private:
    struct Sprite {
        QPixmap pixels;
        QPoint offset; ///< from the segment's corner to that of the pixels, in device pixels
    };

    QRect segmentRect(int channel, int segment) const;
    Sprite segmentSprite(const QSize& segment, const QColor& color, double glow) const;
    void drawUnlitSegments(QPainter& painter) const;
    void drawScale(QPainter& painter) const;

    QRectF m_room;
    VfdSurface m_surface;
    std::array<Sprite, VfdGeometry::Segments> m_lit;
    std::array<Sprite, VfdGeometry::Segments> m_held;
};
