#include "station/copyfiles.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

bool CopyFiles::renameNew(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    // Some network file systems cannot promise it.
    const bool unknown = errno == EINVAL || errno == ENOSYS;
    return unknown && !QFileInfo::exists(to) && std::rename(source.constData(), target.constData()) == 0;
}

void CopyFiles::forgetCached(QFileDevice& file)
{
    posix_fadvise(file.handle(), 0, 0, POSIX_FADV_DONTNEED);
}
