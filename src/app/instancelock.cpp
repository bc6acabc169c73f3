#include "app/instancelock.h"

#include "app/lockholder.h"
#include "settings/channel.h"

#include <QDir>
#include <QFileInfo>

#include <chrono>

using namespace std::chrono_literals;

namespace {

/// Empty when there is no temporary folder: Qt would have us lock the current folder then.
QString lockPath(const QString& ending)
{
    const QString folder = QDir::tempPath();
    return QDir::isAbsolutePath(folder) ? QDir(folder).filePath(Channel::fileName() + ending) : QString();
}

} // namespace

bool InstanceLock::take()
{
    m_problem.clear();
    const QString usual = lockPath(QStringLiteral(".lock"));
    // Where another user's file is in the way. No channel has such a name, as a name has no dot.
    const QString besideIt = lockPath(u'.' + lockUserName() + QStringLiteral(".lock"));
    const bool held = tryToHold(usual);
    if (!held && lockHolder(usual) == LockHolder::ThisUser)
        return false;
    // An instance that found another user's file may still hold the second one, with the first one free by now.
    bool isFree = lockHolder(besideIt) != LockHolder::ThisUser;
    if (isFree && (held || tryToHold(besideIt)))
        return true;
    isFree = isFree && lockHolder(besideIt) != LockHolder::ThisUser; // nor taken just now
    m_lock.reset();
    if (!isFree)
        return false;
    const QString folder = QDir::tempPath().isEmpty() ? qEnvironmentVariable("TMPDIR") : QDir::tempPath();
    m_problem =
        tr("No lock can be made in the temporary folder %1. A second start of this channel would not be noticed.")
            .arg(QDir::toNativeSeparators(folder));
    return true;
}

/// QLockFile takes over what a dead process has left, if it can read there who that was. Where it cannot, because the
/// file is empty or names another computer, it is removed here.
bool InstanceLock::tryToHold(const QString& path)
{
    if (path.isEmpty())
        return false;
    m_lock = std::make_unique<QLockFile>(path);
    m_lock->setStaleLockTime(0ms);
    if (m_lock->tryLock(100ms))
        return true;
    if (m_lock->error() != QLockFile::LockFailedError || lockHolder(path) != LockHolder::Nobody)
        return false;
    return m_lock->removeStaleLockFile() && m_lock->tryLock(100ms);
}
