#pragma once

#include "capture/loopback.h"

#include <QByteArray>
#include <QList>
#include <QString>

/// An input device.
struct InputDevice {
    QByteArray id; ///< as the settings store it
    QString label;
    int channels = 0;
};

/// All that can be recorded from on this machine, beside internet streams. Needs a QCoreApplication, and no display.
struct DeviceList {
    QList<InputDevice> inputs; ///< in the system's order
    QList<PlaybackDevice> playback;

    /// The devices at this moment. Waits 2 seconds at most for the system and returns what has come until then.
    static DeviceList current();
};
