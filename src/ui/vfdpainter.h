#pragma once

#include "ui/vfdclock.h"
#include "ui/vfdgeometry.h"

#include <QBitArray>
#include <QColor>
#include <QCoreApplication>
#include <QFont>
#include <QPixmap>

#include <array>
#include <optional>

class QPainter;

/// Draws the display panel, a region at a time and nothing outside it. What never changes, and the segments of the
/// meter with their glow, is drawn once for a Surface and then copied.
class VfdPainter {
    Q_DECLARE_TR_FUNCTIONS(VfdPanel)
public:
    struct Surface {
        QSize size;
        qreal devicePixelRatio = 1.0;
        QFont font;
        QColor surroundings; ///< shows at the rounded corners

        friend bool operator==(const Surface&, const Surface&) = default;
    };
    enum Lamp { Rec, Auto, Trig, Clip };
    static constexpr int LampCount = 4;
    using Lamps = std::array<std::optional<bool>, LampCount>; ///< lit or unlit; a lamp without a value is not there

    struct Today {
        QBitArray scheduled; ///< by hour
        int hour = -1; ///< the current one

        friend bool operator==(const Today&, const Today&) = default;
    };

    /// To be called before all others, and again when any of it may have changed.
    void setSurface(const Surface& surface);
    const VfdGeometry::Layout& layout() const { return m_layout; }
    QRectF lampRect(Lamp lamp, const Lamps& lamps) const;
    /// The part of the meter to be repainted after the lights have changed.
    QRectF meterChange(const VfdGeometry::MeterLights& from, const VfdGeometry::MeterLights& to) const;

    /// As far as the painter's clip allows, as with all the others.
    void drawBackground(QPainter& painter) const;
    void drawClock(QPainter& painter, qint64 ms);
    void drawMeter(QPainter& painter, const VfdGeometry::MeterLights& lights, const QRect& dirty) const;
    void drawStatus(QPainter& painter, const Lamps& lamps, const QString& codec, const QString& source) const;
    void drawSchedule(QPainter& painter, const Today& today) const;
    void drawBottom(QPainter& painter, const QString& disk, const QString& file) const;

private:
    struct Sprite {
        QPixmap pixels;
        QPoint offset; ///< of its corner from the segment's corner, device pixels
    };

    int toDevice(double logical) const { return qRound(logical * m_surface.devicePixelRatio); }
    QRect segmentRect(int channel, int segment) const;
    Sprite segmentSprite(const QSize& segment, const QColor& color, double glow) const;
    QPixmap renderBackground() const;
    void renderMeterGround(QPainter& painter) const;
    void renderScale(QPainter& painter) const;
    QFont font(int pixelSize, double spacing = 0.0) const;
    QPixmap renderLamp(Lamp lamp, bool lit) const;
    QRectF hourCell(int hour) const;

    Surface m_surface;
    VfdGeometry::Layout m_layout;
    QPixmap m_background;
    std::array<Sprite, VfdGeometry::Segments> m_lit;
    std::array<Sprite, VfdGeometry::Segments> m_held;
    VfdClock m_clock;
    std::array<double, LampCount> m_lampWidths{};
    std::array<std::array<QPixmap, 2>, LampCount> m_lamps; ///< unlit and lit
    double m_todayWidth = 0.0;
};
