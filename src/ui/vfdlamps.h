#pragma once

#include "ui/vfdsurface.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QRectF>

#include <array>
#include <optional>

class QPainter;

/// The lamps at the left of the status line. Each is drawn once for a surface, lit and unlit.
class VfdLamps {
    Q_DECLARE_TR_FUNCTIONS(VfdPanel)
public:
    enum Lamp { Rec, Auto, Trig, Clip };
    static constexpr int Count = 4;
    using States = std::array<std::optional<bool>, Count>; ///< lit or unlit; a lamp without a value is not shown

    void setSurface(const QRectF& room, const VfdSurface& surface);
    /// Where a lamp is, which depends on the lamps left of it; empty when it is not shown.
    QRectF rect(Lamp lamp, const States& states) const;
    void draw(QPainter& painter, const States& states) const;

private:
    QPixmap render(Lamp lamp, bool lit) const;

    QRectF m_room;
    VfdSurface m_surface;
    std::array<double, Count> m_widths{};
    std::array<std::array<QPixmap, 2>, Count> m_pixmaps; ///< unlit and lit
};
