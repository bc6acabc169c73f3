#include "ui/sevensegment.h"

#include <QPolygonF>
#include <QTransform>

#include <array>

namespace {

constexpr unsigned AllSegments = 0x7f;
/// Bit 0 is the top, then clockwise; bit 6 is the middle.
constexpr std::array<unsigned, 10> SegmentsOf{0x3f, 0x06, 0x5b, 0x4f, 0x66, 0x6d, 0x7d, 0x07, 0x7f, 0x6f};

constexpr double Thickness = 0.125; ///< of the height
constexpr double Slant = -0.09;
constexpr double Gap = 0.7; ///< between the tips of two segments, pixels

/// A bar with pointed ends from one joint to another, horizontal or vertical.
QPolygonF bar(const QPointF& from, const QPointF& to, double thickness)
{
    const bool horizontal = from.y() == to.y();
    const QPointF along = horizontal ? QPointF(1, 0) : QPointF(0, 1);
    const QPointF side = QPointF(along.y(), along.x()) * (thickness / 2);
    const QPointF tip = along * (thickness / 2);
    const QPointF a = from + along * Gap;
    const QPointF b = to - along * Gap;
    return QPolygonF({a, a + tip - side, b - tip - side, b, b - tip + side, a + tip + side, a});
}

QPainterPath slanted(const QPainterPath& path, const QRectF& cell)
{
    const QPointF foot(cell.left(), cell.center().y());
    return QTransform::fromTranslate(-foot.x(), -foot.y()).map(path) * QTransform(1, 0, Slant, 1, foot.x(), foot.y());
}

QPainterPath digit(unsigned segments, const QRectF& cell)
{
    const double thickness = cell.height() * Thickness;
    const QRectF joints = cell.adjusted(thickness / 2, thickness / 2, -thickness / 2, -thickness / 2);
    const QPointF middleLeft(joints.left(), joints.center().y());
    const QPointF middleRight(joints.right(), joints.center().y());
    const std::array<QPolygonF, 7> bars{
        bar(joints.topLeft(), joints.topRight(), thickness),
        bar(joints.topRight(), middleRight, thickness),
        bar(middleRight, joints.bottomRight(), thickness),
        bar(joints.bottomLeft(), joints.bottomRight(), thickness),
        bar(middleLeft, joints.bottomLeft(), thickness),
        bar(joints.topLeft(), middleLeft, thickness),
        bar(middleLeft, middleRight, thickness),
    };
    QPainterPath path;
    for (size_t i = 0; i < bars.size(); ++i) {
        if (segments >> i & 1U)
            path.addPolygon(bars[i]);
    }
    return slanted(path, cell);
}

QPainterPath colon(const QRectF& cell)
{
    const double size = cell.height() * Thickness;
    QPainterPath path;
    for (const double at : {0.31, 0.69}) {
        const QPointF center(cell.center().x(), cell.top() + at * cell.height());
        path.addRect(QRectF(center - QPointF(size, size) / 2, QSizeF(size, size)));
    }
    return slanted(path, cell);
}

} // namespace

QPainterPath SevenSegment::figure(QChar character, const QRectF& cell)
{
    if (character == u':')
        return colon(cell);
    const int value = character.unicode() - u'0';
    return value >= 0 && value <= 9 ? digit(SegmentsOf[size_t(value)], cell) : QPainterPath();
}

QPainterPath SevenSegment::ghost(QChar character, const QRectF& cell)
{
    return character == u':' ? colon(cell) : digit(AllSegments, cell);
}
