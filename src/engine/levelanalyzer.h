#pragma once

#include "capture/pcmformat.h"

#include <QByteArray>
#include <QObject>
#include <QQueue>
#include <QTimer>

/// Meters PCM in chunks of 20 ms and tells when the input has gone silent. The readings are queued and released at a
/// steady 50 per second, whatever the size and timing of the blocks. Levels are in dBFS: 32768 is 0 dB, and anything
/// below -60 dB reads exactly -60.
class LevelAnalyzer : public QObject {
    Q_OBJECT
public:
    /// The level that stands for silence and everything below it (dBFS).
    static constexpr double FloorDb = -60.0;
    /// Readings kept when they come in faster than they are released: 12 seconds. The oldest go first.
    static constexpr qsizetype MaxReadings = 600;

    explicit LevelAnalyzer(QObject* parent = nullptr);

    /// Takes the format and resets.
    void configure(const PcmFormat& format);
    /// Forgets all readings and the silence; emits nothing.
    void reset();
    /// A chunk whose peak is at or below thresholdDb (dBFS) is silent; silence is declared after that many seconds of
    /// silent audio, never when seconds is 0.
    void setSilence(double thresholdDb, int seconds);
    /// Analyses one block in the configured format. Silence and its end are told before this returns.
    void process(const QByteArray& pcmS16);

Q_SIGNALS:
    void levelChanged(double peakDb, double rmsDb);
    /// Peak of the first channel, and of the loudest of all others; in mono both are the same.
    void channelLevels(double leftPeakDb, double rightPeakDb);
    /// Once per silent stretch, with the configured duration.
    void silenceDetected(int seconds);
    /// Sound has come again after silenceDetected().
    void audioRestored();

public Q_SLOTS:
    /// Releases the oldest reading, if there is one. A timer of the object's own calls it.
    void emitNextSample();

private:
    struct Reading {
        double peakDb, rmsDb, leftDb, rightDb;
    };

    void judgeSilence(double peakDb, qint64 frames);
    void onReleaseTimer();

    QQueue<Reading> m_readings;
    PcmFormat m_format;
    double m_silenceThresholdDb = FloorDb;
    int m_silenceSeconds = 10;
    double m_lastPeakDb = FloorDb;
    qint64 m_silentFrames = 0;
    bool m_silent = false;
    QTimer m_release{this}; ///< rests once nothing has come for a while
    int m_emptyTicks = 0; ///< ticks of m_release since it last had a reading to release
};
