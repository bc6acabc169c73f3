#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>

#include <algorithm>

class QWidget;
class Recorder;

/// Measures for 10 seconds how the audio reaches the recorder: for an engineer who suspects a sound card.
class CaptureDiagnostics : public QObject {
    Q_OBJECT
public:
    /// Things that arrive one after the other, and the longest wait between two of them.
    struct Arrivals {
        void add(qint64 atMs);

        qint64 count = 0;
        qint64 lastMs = -1; ///< -1: none yet
        qint64 largestGapMs = -1; ///< -1: fewer than two
    };
    /// What one measurement gathered.
    struct Measurement {
        QString source; ///< description of the source
        int sampleRate = 0; ///< Hz
        int channels = 0;
        qint64 elapsedMs = 0;
        qint64 bytes = 0; ///< of S16 audio
        Arrivals buffers, meters;
        double lowestDb = 999.0;
        double highestDb = -999.0;
    };

    explicit CaptureDiagnostics(Recorder* recorder, QObject* parent = nullptr);

    /// Begins a measurement, which ends by itself with the report in the log and on the clipboard. Without effect while
    /// one runs; a box over the window says so when nothing is being recorded.
    void run(QWidget* window);

    static QStringList report(const Measurement& measured);

public Q_SLOTS:
    void addBuffer(qint64 bytes);
    void addLevels(double leftPeakDb, double rightPeakDb);

Q_SIGNALS:
    void logMessage(const QString& text);
    /// The report is on the clipboard.
    void finished();

private:
    void finish();

    Recorder* m_recorder;
    bool m_running = false;
    QElapsedTimer m_clock;
    Measurement m_measured;
};
