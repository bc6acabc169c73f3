#pragma once
#include <QByteArray>
#include <QList>
#include <QString>
struct PlaybackDevice { QByteArray id; QString name; };
inline QList<PlaybackDevice> playbackDevices() { return {}; }
