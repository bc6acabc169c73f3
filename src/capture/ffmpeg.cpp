#include "capture/ffmpeg.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString find()
{
    const QString bundled = QCoreApplication::applicationDirPath() + QStringLiteral("/ffmpeg.exe");
    return QFileInfo::exists(bundled) ? bundled : QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

} // namespace

QString ffmpegPath()
{
    static const QString path = find();
    return path;
}

bool ffmpegAvailable()
{
    return !ffmpegPath().isEmpty();
}
