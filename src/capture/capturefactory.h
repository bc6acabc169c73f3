#pragma once

#include <QAudioDevice>
#include <QList>

class AudioCapture;
class QObject;

/// The sources of audio, by the number that the settings store (capture/backend).
enum class CaptureBackend { Loopback = 0, InputDevice = 1, Stream = 2 };

/// A new source as the settings ask for it, stopped, with this parent.
AudioCapture* createCapture(QObject* parent);

/// The input devices that one can choose.
QList<QAudioDevice> inputDevices();
