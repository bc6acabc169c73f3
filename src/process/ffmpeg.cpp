#include "process/ffmpeg.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
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

QString ffmpegVersion()
{
    if (!ffmpegAvailable())
        return QStringLiteral("none");
    constexpr int PatienceMs = 3000;
    QProcess process;
    process.start(ffmpegPath(), {QStringLiteral("-version")});
    if (!process.waitForFinished(PatienceMs))
        process.kill();
    return ffmpegPath() + QStringLiteral(": ") + QString::fromUtf8(process.readLine(200)).trimmed();
}
