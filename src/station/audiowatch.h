#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class Recorder;

/// Notices that a recording gets no audio, and that audio has come again.
class AudioWatch : public QObject {
    Q_OBJECT
public:
    explicit AudioWatch(Recorder* recorder, QObject* parent = nullptr);

    /// Seconds since the last block; negative before the first one of a run, and while stopped.
    double secondsSinceAudio() const;
    /// Whether audioLost() was the last that was told of this run.
    bool isLost() const { return m_lost; }

Q_SIGNALS:
    /// The first block of a run has come.
    void audioBegan();
    /// No audio has come for 3 seconds; from a stream, for as long as counts as a stall.
    void audioLost();
    /// Audio has come after audioLost(). \param ms time without audio.
    void audioReturned(qint64 ms);
    /// Audio is lost, and a new source may have some: at once, and every 5 seconds. Never for a stream, which connects
    /// anew by itself.
    void restartWanted();

private:
    void look();
    void onAudio();
    void onRecordingChanged(bool recording);

    QTimer m_timer; ///< runs while recording
    QElapsedTimer m_lastAudio; ///< since the last block, or since the run started
    bool m_heard = false; ///< in this run
    bool m_lost = false;
    QElapsedTimer m_lastRestart; ///< valid while m_lost
};
