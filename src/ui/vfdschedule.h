#pragma once

#include "ui/vfdsurface.h"

#include <QBitArray>
#include <QCoreApplication>
#include <QRectF>

class QPainter;

/// The strip with the hours of today: those to be recorded, and the current one.
class VfdSchedule {
    Q_DECLARE_TR_FUNCTIONS(VfdPanel)
public:
    struct Today {
        QBitArray scheduled; ///< by hour
        int hour = -1; ///< the current one

        friend bool operator==(const Today&, const Today&) = default;
    };

    void setSurface(const QRectF& room, const VfdSurface& surface);
    /// Draws what never changes: the legend.
    void drawGround(QPainter& painter) const;
    void draw(QPainter& painter, const Today& today) const;

private:
    QRectF hourCell(int hour) const;
    void drawHour(QPainter& painter, int hour, bool scheduled, bool current) const;

    QRectF m_room;
    VfdSurface m_surface;
    double m_legendWidth = 0.0;
};
