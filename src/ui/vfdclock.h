#pragma once

#include <QPixmap>
#include <QRectF>

#include <array>

class QPainter;

/// The figures of the elapsed time. Each is drawn once and has its fixed place, so that nothing jumps.
class VfdClock {
public:
    void setSurface(const QRectF& room, qreal devicePixelRatio);
    /// Hours, minutes and seconds; the figures become narrower when there are more than usual.
    void draw(QPainter& painter, qint64 ms);

private:
    void renderFigures(const QString& text);

    QRectF m_room;
    qreal m_ratio = 1.0;
    qsizetype m_length = 0; ///< of the text that the figures were made for
    double m_pitch = 0.0;
    std::array<QPixmap, 11> m_figures; ///< the last one is the colon
};
