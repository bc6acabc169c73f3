#include "station/hiddenfolder.h"

#include <QDir>

QString HiddenFolder::path(const QString& recordingsFolder)
{
    return QDir(recordingsFolder).filePath(QStringLiteral(".tidewell"));
}

bool HiddenFolder::make(const QString& path)
{
    return QDir(path).exists() || QDir().mkdir(path);
}
