#include "station/hiddenfolder.h"

#include <QDir>

#include <windows.h>

QString HiddenFolder::path(const QString& recordingsFolder)
{
    return QDir(recordingsFolder).filePath(QStringLiteral(".tidewell"));
}

bool HiddenFolder::make(const QString& path)
{
    if (QDir(path).exists())
        return true;
    if (!QDir().mkdir(path))
        return false;
    SetFileAttributesW(reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(path).utf16()), FILE_ATTRIBUTE_HIDDEN);
    return true;
}
