#include "ui/vfdpanel.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStringList>
#include <QToolTip>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using VfdGeometry::Layout;

namespace {

constexpr QSize SmallestSize(520, 158);
constexpr auto DecayInterval = 50ms;
constexpr auto BlinkInterval = 600ms;
constexpr auto ClipTime = 2000ms;

} // namespace

VfdPanel::VfdPanel(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(SmallestSize);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Recorder display"));
    m_clock.start();
    m_decayTimer.setInterval(DecayInterval);
    m_blinkTimer.setInterval(BlinkInterval);
    m_clipTimer.setSingleShot(true);
    m_clipTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_decayTimer, &QTimer::timeout, this, &VfdPanel::decay);
    connect(&m_blinkTimer, &QTimer::timeout, this, &VfdPanel::blink);
    connect(&m_clipTimer, &QTimer::timeout, this, &VfdPanel::clipTimeout);
    describe();
}

void VfdPanel::setElapsedMs(qint64 ms)
{
    if (ms != 0 && ms / 1000 == m_elapsedMs / 1000)
        return;
    m_elapsedMs = ms;
    updateRegion(&Layout::clock);
}

/// 50 readings per second come in; while the meter moves, it is painted once per step of its fall.
void VfdPanel::setLevels(double leftPeakDb, double rightPeakDb)
{
    m_meter.rise(leftPeakDb, rightPeakDb, m_clock.elapsed());
    if (m_decayTimer.isActive())
        return;
    updateMeter();
    if (!m_meter.isAtRest())
        m_decayTimer.start();
}

void VfdPanel::setRecording(bool recording)
{
    if (std::exchange(m_recording, recording) == recording)
        return;
    m_blinkOn = true;
    recording ? m_blinkTimer.start() : m_blinkTimer.stop();
    updateRegion(&Layout::status);
    describe();
}

void VfdPanel::setAutoMode(bool on)
{
    if (std::exchange(m_auto, on) == on)
        return;
    updateRegion(&Layout::status);
    describe();
}

void VfdPanel::setSourceText(const QString& text)
{
    setText(m_source, text, &Layout::status);
}

void VfdPanel::setCodecText(const QString& text)
{
    setText(m_codec, text, &Layout::status);
}

void VfdPanel::setDiskText(const QString& text)
{
    setText(m_disk, text, &Layout::bottom);
}

void VfdPanel::setFileText(const QString& text)
{
    setText(m_file, text, &Layout::bottom);
}

void VfdPanel::setIdleText(const QString& text)
{
    setText(m_idle, text, &Layout::bottom);
}

void VfdPanel::setSchedule(const Schedule& schedule)
{
    m_schedule = schedule;
    if (today() != m_paintedToday)
        updateRegion(&Layout::schedule);
}

void VfdPanel::flashOverload()
{
    const bool wasLit = isClipping();
    m_sinceClip.start();
    if (wasLit)
        return;
    m_clipTimer.start(ClipTime);
    updateRegion(&Layout::status);
}

void VfdPanel::setTriggerState(bool configured, bool active)
{
    const bool wasConfigured = std::exchange(m_triggerConfigured, configured);
    const bool wasActive = std::exchange(m_triggerActive, active);
    if (wasConfigured == configured && wasActive == active)
        return;
    updateRegion(&Layout::status);
    describe();
}

void VfdPanel::resetLevels()
{
    m_meter.reset();
    m_decayTimer.stop();
    updateMeter();
}

void VfdPanel::setState(const VfdWord& word, bool diskLow)
{
    if (std::exchange(m_diskLow, diskLow) != diskLow)
        updateRegion(&Layout::bottom);
    if (std::exchange(m_word, word) == word)
        return;
    updateRegion(&Layout::status);
    describe();
}

void VfdPanel::setText(QString& stored, const QString& text, QRectF Layout::*region)
{
    if (stored == text)
        return;
    stored = text;
    updateRegion(region);
    describe();
}

void VfdPanel::updateRegion(QRectF Layout::*region)
{
    update((VfdGeometry::layout(width()).*region).toAlignedRect());
}

/// Most steps light the same segments as the one before.
void VfdPanel::updateMeter()
{
    const VfdGeometry::MeterLights before = std::exchange(m_lights, m_meter.lights());
    if (m_lights == before || !isVisible())
        return;
    update(m_painter.meterChange(before, m_lights).toAlignedRect());
}

void VfdPanel::decay()
{
    updateMeter(); // before the fall, so that what came in since the last step is shown in full
    m_meter.decay(m_clock.elapsed());
    if (!m_meter.isAtRest())
        return;
    m_decayTimer.stop();
    updateMeter();
}

void VfdPanel::blink()
{
    m_blinkOn = !m_blinkOn;
    updateRegion(&Layout::status);
}

bool VfdPanel::isClipping() const
{
    return m_sinceClip.isValid() && !m_sinceClip.hasExpired(ClipTime.count() - 1);
}

void VfdPanel::clipTimeout()
{
    if (isClipping())
        m_clipTimer.start(int(ClipTime.count() - m_sinceClip.elapsed()));
    else
        updateRegion(&Layout::status);
}

VfdLamps::States VfdPanel::lamps() const
{
    VfdLamps::States lamps;
    lamps[VfdLamps::Rec] = m_recording && m_blinkOn;
    lamps[VfdLamps::Auto] = m_auto;
    if (m_triggerConfigured)
        lamps[VfdLamps::Trig] = m_triggerActive;
    lamps[VfdLamps::Clip] = isClipping();
    return lamps;
}

VfdSchedule::Today VfdPanel::today() const
{
    const QDateTime now = QDateTime::currentDateTime();
    VfdSchedule::Today today{QBitArray(Schedule::HoursPerDay), now.time().hour()};
    for (int hour = 0; hour < Schedule::HoursPerDay; ++hour)
        today.scheduled.setBit(hour, m_schedule.isOn(now.date().dayOfWeek() - 1, hour));
    return today;
}

void VfdPanel::prepareSurface()
{
    m_painter.setSurface({size(), devicePixelRatioF(), font(), palette().color(QPalette::Window)});
}

void VfdPanel::paintEvent(QPaintEvent* event)
{
    prepareSurface();
    const Layout& layout = m_painter.layout();
    const QRegion& dirty = event->region();
    const auto isDirty = [&](const QRectF& region) { return dirty.intersects(region.toAlignedRect()); };

    QPainter painter(this);
    m_painter.drawBackground(painter);
    if (isDirty(layout.meter))
        m_painter.drawMeter(painter, m_lights, event->rect());
    if (isDirty(layout.clock))
        m_painter.drawClock(painter, m_elapsedMs);
    if (isDirty(layout.status))
        m_painter.drawStatus(painter, lamps(), m_word, m_codec, m_source);
    if (isDirty(layout.schedule)) {
        m_paintedToday = today();
        m_painter.drawSchedule(painter, m_paintedToday);
    }
    if (isDirty(layout.bottom))
        m_painter.drawBottom(painter, m_disk, m_diskLow, bottomText());
}

bool VfdPanel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QRect region;
    const QString text = toolTipAt(help->pos(), &region);
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), text, this, region);
    event->setAccepted(!text.isEmpty());
    return true;
}

/// What a lamp means; elsewhere on their lines the texts that may not fit.
QString VfdPanel::toolTipAt(const QPoint& position, QRect* region) const
{
    const VfdLamps::States shown = lamps();
    const std::array<QString, VfdLamps::Count> meanings{
        m_recording ? tr("Recording") : tr("Not recording"),
        m_auto ? tr("Automatic recording by the schedule is on") : tr("Automatic recording by the schedule is off"),
        m_triggerActive ? tr("The external trigger is active") : tr("The external trigger is not active"),
        tr("Lights up for two seconds when the input exceeds full scale"),
    };
    for (int i = 0; i < VfdLamps::Count; ++i) {
        *region = m_painter.lampRect(VfdLamps::Lamp(i), shown).toAlignedRect();
        if (region->contains(position))
            return meanings[size_t(i)];
    }
    const Layout& layout = m_painter.layout();
    for (const auto& [rect, text] : {std::pair(layout.status, m_source), std::pair(layout.bottom, bottomText())}) {
        *region = rect.toAlignedRect();
        if (region->contains(position))
            return text.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
    }
    return {};
}

/// For screen readers. The levels and the clock are left out: they would never stop talking.
void VfdPanel::describe()
{
    QStringList parts{m_recording ? tr("Recording") : tr("Not recording")};
    if (!m_word.text.isEmpty())
        parts.prepend(m_word.text);
    if (m_auto)
        parts << tr("Automatic mode");
    if (m_triggerConfigured)
        parts << (m_triggerActive ? tr("Trigger active") : tr("Trigger not active"));
    const auto add = [&](const QString& name, const QString& value) {
        if (!value.isEmpty())
            parts << name.arg(value);
    };
    add(tr("Codec: %1"), m_codec);
    add(tr("Source: %1"), m_source);
    add(tr("Disk time left: %1"), m_disk);
    add(tr("File: %1"), m_file);
    if (m_file.isEmpty() && !m_idle.isEmpty())
        parts << m_idle;
    setAccessibleDescription(parts.join(QStringLiteral(". ")));
}
