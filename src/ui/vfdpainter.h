#pragma once

#include "ui/vfdclock.h"
#include "ui/vfdgeometry.h"
#include "ui/vfdlamps.h"
#include "ui/vfdmeter.h"
#include "ui/vfdschedule.h"
#include "ui/vfdsurface.h"

#include <QCoreApplication>
#include <QPixmap>

class QPainter;

/// What the panel says of the station in capitals; an empty text says nothing.
struct VfdWord {
    QString text;
    bool alarming = false; ///< somebody should come

    friend bool operator==(const VfdWord&, const VfdWord&) = default;
};

/// Draws the display panel, a region at a time and nothing outside it. What never changes is drawn once for a surface
/// and then copied. Meter, clock, lamps and schedule have painters of their own; the texts beside and below are drawn
/// here.
class VfdPainter {
    Q_DECLARE_TR_FUNCTIONS(VfdPanel)
public:
    /// To be called before all others, and again when any of it may have changed.
    void setSurface(const VfdSurface& surface);
    const VfdGeometry::Layout& layout() const { return m_layout; }
    QRectF lampRect(VfdLamps::Lamp lamp, const VfdLamps::States& lamps) const { return m_lamps.rect(lamp, lamps); }
    /// The part of the meter to be repainted after the lights have changed.
    QRectF meterChange(const VfdGeometry::MeterLights& from, const VfdGeometry::MeterLights& to) const;

    /// Draws within the painter's clip, as all functions below do.
    void drawBackground(QPainter& painter) const;
    void drawClock(QPainter& painter, qint64 ms);
    void drawMeter(QPainter& painter, const VfdGeometry::MeterLights& lights, const QRect& dirty) const;
    void drawStatus(QPainter& painter, const VfdLamps::States& lamps, const VfdWord& word, const QString& codec,
                    const QString& source) const;
    void drawSchedule(QPainter& painter, const VfdSchedule::Today& today) const;
    void drawBottom(QPainter& painter, const QString& disk, bool diskLow, const QString& file) const;

private:
    QPixmap renderBackground() const;
    double drawWord(QPainter& painter, const QRectF& rest, const VfdWord& word) const;

    VfdSurface m_surface;
    VfdGeometry::Layout m_layout;
    QPixmap m_background;
    VfdClock m_clock;
    VfdMeter m_meter;
    VfdLamps m_lamps;
    VfdSchedule m_schedule;
};
