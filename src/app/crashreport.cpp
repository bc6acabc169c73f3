#include "app/crashreport.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

QString CrashReport::takeLast(const QString& folder)
{
    const QDir directory(folder);
    const QFileInfo report(directory.filePath(QLatin1String(FileName)));
    if (!report.isFile())
        return {};
    const QString name = report.lastModified().toString(QStringLiteral("'crash-'yyyyMMdd-HHmmss'.txt'"));
    const QString path = directory.filePath(name);
    return QFile::rename(report.filePath(), path) ? path : QString();
}
