#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class AudioCapture;
class QObject;

/// A device that sound is played on, and whose mix can be recorded.
struct PlaybackDevice {
    QByteArray id; ///< as the settings store it; UTF-8
    QString name; ///< for people
};

/// Those of the system, in its order. Waits for an answer, 2 seconds at most, and returns what has come until then.
QList<PlaybackDevice> playbackDevices();

/// A stopped source that records what this device plays; an empty id, or one that is not there, means the default one.
AudioCapture* createLoopbackCapture(const QByteArray& deviceId, QObject* parent);
