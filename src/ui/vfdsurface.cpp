#include "ui/vfdsurface.h"

QFont VfdSurface::font(int pixelSize, double spacing) const
{
    QFont font = baseFont;
    font.setPixelSize(pixelSize);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    if (spacing > 0)
        font.setWeight(QFont::DemiBold);
    return font;
}
