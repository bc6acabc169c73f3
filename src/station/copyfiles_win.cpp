#include "station/copyfiles.h"

#include <QDir>

#include <windows.h>

bool CopyFiles::renameNew(const QString& from, const QString& to)
{
    const QString source = QDir::toNativeSeparators(from);
    const QString target = QDir::toNativeSeparators(to);
    return MoveFileExW(reinterpret_cast<const wchar_t*>(source.utf16()),
                       reinterpret_cast<const wchar_t*>(target.utf16()), MOVEFILE_WRITE_THROUGH);
}

void CopyFiles::forgetCached(QFileDevice&) {}
