#pragma once

#include "archive/recordinfo.h"
#include "capture/pcmformat.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <list>
#include <memory>
#include <optional>

class ArchiveIndex;
class AudioCapture;
class Encoder;
class LevelAnalyzer;

/// The recording engine. While it runs it owns one capture source and one encoder, passes every block through the level
/// analyser into the encoder, cuts the recording into segment files on the clock and reports each finished file.
///
/// Everything happens on the user-interface thread. Audio that arrives while a segment is closed and the next one
/// opened waits in the capture source and the sound server, as far as they have room: PulseAudio has 4 MB, that is 20
/// seconds and more. What is finished stays on disk and in the archive, whatever goes wrong later.
class Recorder : public QObject {
    Q_OBJECT
public:
    /// What the recorder takes from outside: the clock that names and cuts files, what makes its sources, and a veto.
    struct Environment {
        std::function<qint64()> nowMs; ///< since the epoch; called for every block, so it must do no time-zone lookup
        std::function<AudioCapture*()> createCapture;
        std::function<QString()> refusal = nullptr; ///< why it must not start now; an empty text: it may. May be null

        /// The system's clock, and the source that the settings ask for.
        static Environment real();
    };

    /// \param archive gets every finished file; may be null, and outlives the recorder.
    explicit Recorder(ArchiveIndex* archive, QObject* parent = nullptr, Environment environment = Environment::real());
    ~Recorder() override;

    bool isRecording() const { return m_recording; }
    /// Milliseconds since the recording run started; 0 while stopped.
    qint64 elapsedMs() const;
    QString currentFilePath() const { return m_current.filePath; }
    /// The source's display name; empty while there is none.
    QString sourceDescription() const;
    /// Name that a file starting then would get from the current settings, without folder and collision counter.
    QString previewFileName(const QDateTime& start) const;
    /// Whether the source has delivered in this run, or, while stopped, in the last one.
    bool hasHeard() const { return m_hasHeard; }
    /// Whether the run ended by an error, or failed to start, that may mend itself.
    bool isWorthRetrying() const { return m_worthRetrying; }

Q_SIGNALS:
    void recordingChanged(bool recording);
    void levelChanged(double peakDb, double rmsDb);
    void channelLevels(double leftPeakDb, double rightPeakDb);
    void overloadDetected();
    /// A block has come; emitted before anything else is done with it.
    void audioReceived(qint64 bytes);
    void elapsedChanged(qint64 ms);
    void logMessage(const QString& text);
    void errorOccurred(const QString& text);
    void fileStarted(const QString& path);
    /// A file of at least 1 ms was closed.
    void fileFinished(const RecordInfo& info);
    void silenceDetected(int seconds);
    void audioRestored();
    /// A run has started, or stopped, for the reason given to start() or stop(). Emitted after all other signals of
    /// that change.
    void started(const QString& reason);
    void stopped(const QString& reason);
    /// The source delivers silence in place of an outage of this length.
    void timeMadeUp(qint64 ms);

public Q_SLOTS:
    /// \param reason one of Reason, or any text; it is only reported. \return true when it records, or did already;
    /// false after errorOccurred().
    bool start(const QString& reason);
    bool start() { return start({}); }
    /// Closes the last file. Without effect while stopped.
    void stop(const QString& reason);
    void stop() { stop({}); }
    void onData(const QByteArray& pcmS16);
    void onCaptureError(const QString& message);
    void onTick();
    /// Replaces the source, which has fallen silent, by a new one. The file goes on. Without effect while stopped.
    void restartSource();

private:
    /// A file that is still being finished, after the next one was begun.
    struct Closing {
        std::unique_ptr<Encoder> encoder;
        RecordInfo record;
    };
    bool openSegment(qint64 nowMs);
    void closeSegment(bool takesLong = false);
    void discardSegment();
    void reportClosed(Encoder& encoder, RecordInfo record, bool hadFailed);
    void closeLater();
    void replaceStuckEncoder();
    void takeQueued();
    void carry(const QList<QByteArray>& blocks);
    void reportLost(qint64 lost);
    qint64 durationMs(qint64 bytes) const;
    bool writeCarried();
    void fail(const QString& text, const char* reason);
    bool startCapture();
    void releaseCapture();
    QString baseName(const QDateTime& start) const;
    QString freePath(const QDateTime& start) const;

    ArchiveIndex* m_archive;
    Environment m_environment;
    QPointer<AudioCapture> m_capture;
    std::unique_ptr<Encoder> m_encoder;
    LevelAnalyzer* m_levels;
    QTimer m_tick;
    bool m_recording = false;
    PcmFormat m_format;
    RecordInfo m_current; ///< the file being written; empty while there is none
    QElapsedTimer m_elapsed; ///< since the run started
    std::optional<qint64> m_segmentEndMs; ///< on the clock of the environment; none: no split
    qint64 m_fileFrames = 0; ///< written to the current file
    bool m_hasHeard = false;
    bool m_worthRetrying = false;
    bool m_failed = false; ///< the run is being ended by an error
    int m_serialBefore = 1; ///< the current file's
    std::list<Closing> m_closing;
    // What one file did not take goes into the next one, if that is begun soon.
    QList<QByteArray> m_carried;
    PcmFormat m_carriedFormat;
    QElapsedTimer m_carriedSince;
};
