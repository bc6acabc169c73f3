#include "support/audiofiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

namespace {

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

} // namespace

QJsonObject AudioFiles::probe(const QString& path)
{
    const QByteArray json = output(QStringLiteral("ffprobe"),
                                   QStringLiteral("-v error -of json -show_streams -show_format").split(u' ') << path);
    const QJsonObject report = QJsonDocument::fromJson(json).object();
    QJsonObject merged = report[QStringLiteral("streams")].toArray().at(0).toObject();
    const QJsonObject format = report[QStringLiteral("format")].toObject();
    for (auto it = format.begin(); it != format.end(); ++it)
        merged[it.key()] = it.value();
    return merged;
}

QByteArray AudioFiles::decode(const QString& path)
{
    return output(QStringLiteral("ffmpeg"), {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                                             QStringLiteral("-f"), QStringLiteral("s16le"), QStringLiteral("-")});
}
