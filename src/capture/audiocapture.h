#pragma once

#include "capture/pcmformat.h"

#include <QObject>

/// One source of audio: an input device, the mix of a playback device, or an internet stream.
/// Use: create, connect, start(), receive blocks on the owner's thread, stop(), delete.
class AudioCapture : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Starts delivering blocks of this format; a running source is stopped first.
    /// \return false after errorOccurred() when that could not be done; the source is then stopped.
    virtual bool start(const PcmFormat& format) = 0;
    /// Nothing of this run is delivered afterwards. Without effect while stopped.
    virtual void stop() = 0;
    virtual bool isRunning() const = 0;
    /// One line with the display name of what is really recorded; known at the latest with the first block.
    virtual QString description() const = 0;
    /// false after an errorOccurred() that another start() cannot mend: the settings, or what is installed, must change
    /// first.
    virtual bool isWorthRetrying() const { return true; }

Q_SIGNALS:
    /// One block, never empty, in the format that start() was given, with gain and limiter applied.
    void dataReady(const QByteArray& pcmS16);
    /// A failure, told in a sentence for the operator.
    void errorOccurred(const QString& message);
    /// true after a successful start(), false when the source stopped; a source that reconnects may skip the false.
    void runningChanged(bool running);
    /// Something that the source gets over by itself, such as a reconnect.
    void warning(const QString& message);
    /// At least one sample of the last block was beyond GainStage::Threshold after the gain.
    void overloadDetected();
    /// Silence that replaces an outage of this length follows as data.
    void timeMadeUp(qint64 ms);
};
