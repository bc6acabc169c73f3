#pragma once

#include <QColor>
#include <QFont>
#include <QSize>

/// What the display panel is drawn on, as all its painters need to know.
struct VfdSurface {
    QSize size; ///< of the whole panel, logical pixels
    qreal devicePixelRatio = 1.0;
    QFont baseFont;
    QColor surroundings; ///< shows at the rounded corners

    int toDevice(double logical) const { return qRound(logical * devicePixelRatio); }
    /// Spaced text is a little bolder.
    QFont font(int pixelSize, double spacing = 0.0) const;

    friend bool operator==(const VfdSurface&, const VfdSurface&) = default;
};
