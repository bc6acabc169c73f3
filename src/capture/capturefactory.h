#pragma once

#include <QAudioDevice>
#include <QList>

class AudioCapture;
class QObject;

/// A new source as the settings ask for it, stopped, with this parent.
AudioCapture* createCapture(QObject* parent);

/// The input devices that the operator can choose from.
QList<QAudioDevice> inputDevices();
