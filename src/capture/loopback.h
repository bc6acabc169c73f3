#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class AudioCapture;
class QObject;

/// A device that sound is played on, and whose mix can be recorded.
struct PlaybackDevice {
    QByteArray id; ///< as the settings store it; UTF-8
    QString name; ///< the display name
};

/// The playback devices in the system's order. Waits 2 seconds at most and returns what has come by then.
QList<PlaybackDevice> playbackDevices();

/// A stopped source that records what this device plays; an empty or unknown id means the default one.
AudioCapture* createLoopbackCapture(const QByteArray& deviceId, QObject* parent);
