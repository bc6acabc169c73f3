#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// What well-known programs see in an audio file.
namespace AudioFiles {

/// The audio stream and the format as ffprobe reports them, merged; empty when it refuses the file.
QJsonObject probe(const QString& path);
/// The file's audio as S16LE, decoded by ffmpeg, without any conversion of rate or channels.
QByteArray decode(const QString& path);

} // namespace AudioFiles
