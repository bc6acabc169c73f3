#include "app/lockholder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// For a file system that knows no locks: whether the process that the file names in its first line is this program.
bool namesUs(int file)
{
    char text[32] = {};
    const ssize_t length = pread(file, text, sizeof text - 1, 0);
    const qint64 processId = length > 0 ? QByteArray(text, length).split('\n').value(0).toLongLong() : 0;
    if (processId <= 0)
        return false;
    const QString folder = QStringLiteral("/proc/%1").arg(processId);
    struct stat process = {};
    if (stat(QFile::encodeName(folder).constData(), &process) != 0 || process.st_uid != geteuid())
        return false;
    const QString program = QFile::symLinkTarget(folder + QStringLiteral("/exe")); // " (deleted)" after an update
    return QFileInfo(program).fileName().section(u' ', 0, 0) ==
           QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

} // namespace

LockHolder lockHolder(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    constexpr int Flags = O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC; // it may be a pipe, or a link that somebody has laid
    int file = open(name.constData(), O_RDWR | Flags); // locks over NFS want it writable
    if (file < 0 && (errno == EROFS || errno == EACCES))
        file = open(name.constData(), O_RDONLY | Flags);
    if (file < 0)
        return errno == ENOENT ? LockHolder::Nobody : LockHolder::AnotherUser;
    LockHolder holder = LockHolder::Nobody;
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != geteuid())
        holder = LockHolder::AnotherUser;
    else if (flock(file, LOCK_EX | LOCK_NB) != 0)
        holder = errno == EWOULDBLOCK || namesUs(file) ? LockHolder::ThisUser : LockHolder::Nobody;
    close(file);
    return holder;
}

QString lockUserName()
{
    return QString::number(geteuid());
}
