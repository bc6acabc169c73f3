#include "ui/vfdclock.h"

#include "ui/sevensegment.h"
#include "ui/vfdlook.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr double ColonPitch = 0.45; ///< of a figure's pitch
constexpr double FigureWidth = 0.78; ///< of its pitch
constexpr double WidestPitch = 0.76; ///< of the height
constexpr double GhostAlpha = 0.45;
constexpr size_t Colon = 10;

QString clockText(qint64 ms)
{
    const auto twoDigits = [](qint64 value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("%1:%2:%3")
        .arg(twoDigits(ms / 3'600'000), twoDigits(ms / 60'000 % 60), twoDigits(ms / 1000 % 60));
}

} // namespace

void VfdClock::setSurface(const QRectF& room, qreal devicePixelRatio)
{
    m_room = room;
    m_ratio = devicePixelRatio;
    m_length = 0;
}

void VfdClock::renderFigures(const QString& text)
{
    const auto colons = double(text.count(u':'));
    m_length = text.size();
    m_pitch = qMin(WidestPitch * m_room.height(), m_room.width() / (double(m_length) - colons + colons * ColonPitch));
    for (size_t i = 0; i < m_figures.size(); ++i) {
        const QChar character = i == Colon ? u':' : QChar(u'0' + int(i));
        const double width = m_pitch * FigureWidth * (i == Colon ? ColonPitch : 1.0);
        const QRectF cell(VfdLook::Reach, VfdLook::Reach, width, m_room.height());
        const double slant = VfdLook::Reach;
        const QSizeF size(width + 2 * VfdLook::Reach + slant, cell.height() + 2 * VfdLook::Reach);
        QPixmap pixels(QSize(int(std::ceil(size.width() * m_ratio)), int(std::ceil(size.height() * m_ratio))));
        pixels.fill(Qt::transparent);
        QPainter painter(&pixels);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(m_ratio, m_ratio);
        const QPainterPath lit = SevenSegment::figure(character, cell);
        painter.fillPath(SevenSegment::ghost(character, cell), VfdLook::withAlpha(VfdLook::DimCyan, GhostAlpha));
        VfdLook::drawGlow(painter, lit, VfdLook::Cyan);
        painter.fillPath(lit, VfdLook::Cyan);
        painter.end();
        m_figures[i] = pixels;
    }
}

void VfdClock::draw(QPainter& painter, qint64 ms)
{
    const QString text = clockText(qMax(qint64(0), ms));
    if (text.size() != m_length)
        renderFigures(text);
    painter.save();
    painter.scale(1 / m_ratio, 1 / m_ratio);
    double x = m_room.left() - VfdLook::Reach;
    for (const QChar character : text) {
        const bool isColon = character == u':';
        const QPointF corner = QPointF(x, m_room.top() - VfdLook::Reach) * m_ratio;
        painter.drawPixmap(corner.toPoint(), m_figures[isColon ? Colon : size_t(character.digitValue())]);
        x += isColon ? m_pitch * ColonPitch : m_pitch;
    }
    painter.restore();
}
