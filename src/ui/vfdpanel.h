#pragma once

#include "settings/schedule.h"
#include "ui/meterballistics.h"
#include "ui/vfdpainter.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

/// The instrument at the top of the window: clock, peak meter, lamps, today's schedule, disk and file. It holds what it
/// is told and repaints a region only when something in it looks different.
class VfdPanel : public QWidget {
    Q_OBJECT
public:
    explicit VfdPanel(QWidget* parent = nullptr);

public Q_SLOTS:
    void setElapsedMs(qint64 ms);
    /// Takes one reading, in dBFS, as often as they come. While the meter moves, a reading is seen within 50 ms.
    void setLevels(double leftPeakDb, double rightPeakDb);
    void setRecording(bool recording);
    void setAutoMode(bool on);
    void setSourceText(const QString& text);
    void setCodecText(const QString& text);
    /// Empty while the free space is not known yet.
    void setDiskText(const QString& text);
    void setFileText(const QString& text);
    /// What stands in place of the file while there is none.
    void setIdleText(const QString& text);
    /// Shows this schedule. To be called from time to time too: the strip then moves on to the present hour and day.
    void setSchedule(const Schedule& schedule);
    /// Lights the clip lamp for two seconds.
    void flashOverload();
    void setTriggerState(bool configured, bool active);
    void resetLevels();
    /// Shows the state of the station beside the lamps, and the free space in red when it is low.
    void setState(const VfdWord& word, bool diskLow);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void prepareSurface();
    const QString& bottomText() const { return m_file.isEmpty() ? m_idle : m_file; }
    void setText(QString& stored, const QString& text, QRectF VfdGeometry::Layout::*region);
    void updateRegion(QRectF VfdGeometry::Layout::*region);
    void updateMeter();
    void decay();
    void blink();
    void clipTimeout();
    bool isClipping() const;
    VfdLamps::States lamps() const;
    VfdSchedule::Today today() const;
    QString toolTipAt(const QPoint& position, QRect* region) const;
    void describe();

    VfdPainter m_painter;
    qint64 m_elapsedMs = 0;
    MeterBallistics m_meter;
    VfdGeometry::MeterLights m_lights; ///< painted, or about to be
    bool m_recording = false;
    bool m_auto = false;
    bool m_triggerConfigured = false;
    bool m_triggerActive = false;
    bool m_blinkOn = true;
    QString m_source;
    QString m_codec;
    QString m_disk;
    QString m_file;
    QString m_idle;
    VfdWord m_word;
    bool m_diskLow = false;
    Schedule m_schedule;
    VfdSchedule::Today m_paintedToday;

    QElapsedTimer m_clock;
    QElapsedTimer m_sinceClip; ///< invalid before the first overload
    QTimer m_decayTimer; ///< runs while a level is above the floor
    QTimer m_blinkTimer; ///< runs while recording
    QTimer m_clipTimer;
};
