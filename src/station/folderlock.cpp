#include "station/folderlock.h"

#include "settings/channel.h"
#include "station/hiddenfolder.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSysInfo>

#include <chrono>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr qint64 MaxOwnerBytes = 4096;

QString ownerPath(const QString& folder)
{
    return folder + QStringLiteral("/owner.json");
}

/// To unlock it, or to destroy it, would delete the file, which may be another's by now.
void abandon(std::unique_ptr<QLockFile> lock)
{
    static auto& abandoned = *new std::vector<std::unique_ptr<QLockFile>>; // never destroyed
    abandoned.push_back(std::move(lock));
}

void writeOwner(const QString& folder)
{
    QSaveFile file(ownerPath(folder));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QJsonDocument(QJsonObject{{QStringLiteral("host"), QSysInfo::machineHostName()},
                                         {QStringLiteral("channel"), Channel::name()}})
                   .toJson());
    file.commit();
}

} // namespace

QString FolderLock::take(const QString& recordingsFolder)
{
    if (recordingsFolder.isEmpty())
        return {};
    const QString folder = HiddenFolder::path(recordingsFolder);
    if (m_lock && folder == m_folder && isStillOurs())
        return {};
    if (m_lock && !isStillOurs())
        abandon(std::move(m_lock));
    release();
    QDir().mkpath(recordingsFolder);
    if (!HiddenFolder::make(folder))
        return {};
    m_folder = folder;
    m_lock = std::make_unique<QLockFile>(folder + QStringLiteral("/lock"));
    m_lock->setStaleLockTime(0ms);
    if (m_lock->tryLock(0ms)) {
        writeOwner(folder);
        return {};
    }
    const bool held = m_lock->error() == QLockFile::LockFailedError;
    QString text = held ? refusal() : QString();
    m_lock.reset();
    return text;
}

/// The folder may have been deleted, or another disk may be there now.
bool FolderLock::isStillOurs() const
{
    qint64 processId = 0;
    QString host, program;
    if (!QFileInfo::exists(m_lock->fileName()))
        return false;
    // Windows lets nobody read the file while it is held.
    return !m_lock->getLockInfo(&processId, &host, &program) || processId == QCoreApplication::applicationPid();
}

void FolderLock::release()
{
    m_lock.reset();
    m_folder.clear();
}

QString FolderLock::refusal() const
{
    QFile file(ownerPath(m_folder));
    const QJsonObject owner =
        file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.read(MaxOwnerBytes)).object() : QJsonObject();
    const QString host = owner.value(QLatin1String("host")).toString().left(100);
    const QString channel = owner.value(QLatin1String("channel")).toString().left(Channel::MaxNameLength);
    const QString folder = QDir::toNativeSeparators(QFileInfo(m_folder).path());
    QString text = channel.isEmpty()
                       ? tr("Another Tidewell on the computer %1 records into the folder %2. Choose another folder.")
                             .arg(host, folder)
                       : tr("The Tidewell channel %1 on the computer %2 records into the folder %3. Choose another "
                            "folder.")
                             .arg(channel, host, folder);
    if (host != QSysInfo::machineHostName())
        text += u' ' + tr("If that computer is out of use, delete the file %1.")
                           .arg(QDir::toNativeSeparators(m_folder + QStringLiteral("/lock")));
    return text;
}
