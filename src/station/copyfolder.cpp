#include "station/copyfolder.h"

#include "archive/recordinfo.h"
#include "encode/durable.h"
#include "station/copyfiles.h"
#include "station/hiddenfolder.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>

#include <algorithm>

namespace {

constexpr qint64 BlockBytes = 1024 * 1024;
/// More unwritten data than this would slow down others who write, the recorder for one.
constexpr qint64 SyncBytes = 16 * BlockBytes;
constexpr int MaxNumber = 99; ///< foreign files of one name
constexpr int DeletionsPerCall = 10;

/// Follows the owner in the name of a file that is being copied.
constexpr char PartMark[] = ".part.";

/// "a.mp3", "a.2.mp3", "a.3.mp3" and so on.
QString numbered(const QString& name, int number)
{
    if (number == 1)
        return name;
    const QFileInfo info(name);
    return QStringLiteral("%1.%2.%3").arg(info.completeBaseName()).arg(number).arg(info.suffix());
}

/// A path without symbolic links, ending with a slash; empty when there is no such folder.
QString realPath(const QString& folder)
{
    const QString path = QFileInfo(folder).canonicalFilePath();
    return path.isEmpty() || path.endsWith(u'/') ? path : path + u'/';
}

/// Writes all of it, or else the file has an error: a disk takes a part of a block before it is full.
bool writeWhole(QFile& file, const QByteArray& block)
{
    for (qint64 done = 0; done < block.size();) {
        const qint64 written = file.write(block.constData() + done, block.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

/// No two objects write one file, not even when one of them hangs and another has taken its place.
QString partName(const QString& owner)
{
    static std::atomic<int> number = 0;
    return QStringLiteral("%1%2%3-%4")
        .arg(owner, QLatin1String(PartMark))
        .arg(QCoreApplication::applicationPid())
        .arg(++number);
}

} // namespace

CopyFolder::CopyFolder(Options options)
    : m_options(std::move(options)),
      m_partPath(hiddenPath(partName(m_options.owner))),
      m_list(hiddenPath(QStringLiteral("copies-%1.jsonl").arg(m_options.owner)))
{
}

QString CopyFolder::hiddenPath(const QString& name) const
{
    return HiddenFolder::path(m_options.target) + u'/' + name;
}

bool CopyFolder::isRemembered() const
{
    QFile file(m_options.memoryPath);
    return file.open(QIODevice::ReadOnly) && QString::fromUtf8(file.readAll()) == m_options.target;
}

CopyFolder::Problem CopyFolder::prepare()
{
    const bool remembered = isRemembered();
    if (!remembered)
        QDir().mkpath(m_options.target);
    if (!QDir(m_options.target).exists())
        return Problem::Away;
    const QString source = realPath(m_options.source);
    if (!source.isEmpty() && realPath(m_options.target).startsWith(source))
        return Problem::Inside;
    if (remembered)
        return QFileInfo::exists(m_list.path()) ? Problem::None : Problem::NotOurs;
    return HiddenFolder::make(HiddenFolder::path(m_options.target)) ? Problem::None : Problem::Failed;
}

void CopyFolder::remember() const
{
    if (isRemembered())
        return;
    QDir().mkpath(QFileInfo(m_options.memoryPath).path());
    QSaveFile memory(m_options.memoryPath);
    if (!memory.open(QIODevice::WriteOnly))
        return;
    memory.write(m_options.target.toUtf8());
    memory.commit();
}

/// A kill leaves a half file.
void CopyFolder::removeParts() const
{
    QDirIterator files(HiddenFolder::path(m_options.target), QDir::Files);
    while (files.hasNext()) {
        files.next();
        if (files.fileName().startsWith(m_options.owner + QLatin1String(PartMark)))
            QFile::remove(files.filePath());
    }
}

CopyFolder::Found CopyFolder::look()
{
    Found found;
    found.problem = prepare();
    ++m_progress;
    if (found.problem == Problem::None && !m_list.load())
        found.problem = Problem::Failed;
    if (found.problem != Problem::None) {
        found.text = qt_error_string();
        return found;
    }
    remember();
    removeParts();
    QHash<QString, qint64> sizes;
    QDirIterator files(m_options.target, QDir::Files);
    while (files.hasNext() && !m_cancelled) {
        files.next();
        sizes.insert(files.fileName(), files.fileInfo().size());
        ++m_progress;
    }
    for (const CopyEntry& entry : m_list.entries()) {
        const auto size = sizes.constFind(entry.copy);
        if (size == sizes.constEnd())
            continue;
        if (*size == entry.bytes)
            found.present << entry;
        else
            found.changed << entry.copy;
    }
    return found;
}

QByteArray CopyFolder::hashOf(QFile& file)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (!m_cancelled) {
        const QByteArray block = file.read(BlockBytes);
        ++m_progress;
        if (block.isEmpty())
            return file.error() == QFileDevice::NoError ? hash.result().toHex() : QByteArray();
        hash.addData(block);
    }
    return {};
}

/// Empty when the file cannot be read.
QByteArray CopyFolder::hashOf(const QString& path, bool fromDisk)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    if (fromDisk)
        CopyFiles::forgetCached(file);
    return hashOf(file);
}

CopyFolder::Result CopyFolder::copy(const RecordInfo& record)
{
    QFile original(record.filePath);
    if (!original.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {QFileInfo::exists(record.filePath) ? Outcome::Unreadable : Outcome::Gone, original.errorString(), {}};
    const qint64 ageMs = QFileInfo(original).lastModified().msecsTo(QDateTime::currentDateTime());
    if (ageMs >= 0 && ageMs < m_options.settle.count())
        return {Outcome::Later, {}, {}};

    CopyEntry entry{record.fileName, record.startMs() / 1000, {}, original.size(), {}, true};
    for (int number = 1; number <= MaxNumber && entry.copy.isEmpty(); ++number) {
        const QString name = numbered(record.fileName, number);
        const QFileInfo there(QDir(m_options.target), name);
        if (!there.exists()) {
            entry.copy = name;
        } else if (there.size() == entry.bytes) {
            // A kill between two steps, or somebody who copied by hand: the same content is as good as a copy.
            if (entry.sha256.isEmpty())
                entry.sha256 = hashOf(original);
            if (entry.sha256.isEmpty())
                return {m_cancelled ? Outcome::Cancelled : Outcome::Unreadable, original.errorString(), {}};
            if (hashOf(there.filePath()) != entry.sha256)
                continue;
            entry.copy = name;
            const auto known = m_list.entries().constFind(name);
            entry.ours = known != m_list.entries().constEnd() && known->ours && known->sha256 == entry.sha256;
            const bool listed = m_list.add(entry);
            return {listed ? Outcome::Done : Outcome::Failed, listed ? QString() : qt_error_string(), entry};
        }
    }
    if (entry.copy.isEmpty())
        return {Outcome::Failed, record.fileName, {}};
    original.seek(0);
    return transfer(original, entry);
}

CopyFolder::Result CopyFolder::transfer(QFile& original, CopyEntry entry)
{
    // To write until the disk is full, again with each try, would wear it out.
    const QStorageInfo volume(m_options.target);
    if (volume.isValid() && volume.bytesAvailable() < entry.bytes + BlockBytes)
        return {Outcome::Full, {}, {}};
    QFile part(m_partPath);
    if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return {Outcome::Failed, part.errorString(), {}};
    const auto fail = [this, &part](Outcome outcome, const QString& text) {
        part.remove(); // it may be large, and the disk full
        return Result{m_cancelled ? Outcome::Cancelled : outcome, text, {}};
    };
    QCryptographicHash hash(QCryptographicHash::Sha256);
    qint64 copied = 0;
    for (qint64 unsynced = 0; !m_cancelled; ++m_progress) {
        const QByteArray block = original.read(BlockBytes);
        if (block.isEmpty())
            break;
        hash.addData(block);
        copied += block.size();
        unsynced += block.size();
        if (!writeWhole(part, block))
            return fail(Outcome::Failed, part.errorString());
        if (unsynced >= SyncBytes && !syncToDisk(part))
            return fail(Outcome::Failed, qt_error_string());
        unsynced %= SyncBytes;
    }
    if (original.error() != QFileDevice::NoError)
        return fail(Outcome::Unreadable, original.errorString());
    if (m_cancelled || copied != QFileInfo(original.fileName()).size())
        return fail(Outcome::Later, {});
    entry.bytes = copied;
    entry.sha256 = hash.result().toHex();
    part.setFileTime(QFileInfo(original).lastModified(), QFileDevice::FileModificationTime);
    if (!syncToDisk(part))
        return fail(Outcome::Failed, qt_error_string());
    part.close();
    if (m_options.beforeCompare)
        m_options.beforeCompare(m_partPath);
    if (hashOf(m_partPath, true) != entry.sha256)
        return fail(Outcome::Differs, {});
    // Listed first: a copy that is not in the list would never be deleted.
    if (m_cancelled || !m_list.add(entry))
        return fail(Outcome::Failed, qt_error_string());
    if (!CopyFiles::renameNew(m_partPath, QDir(m_options.target).filePath(entry.copy))) {
        const QString text = qt_error_string();
        m_list.remove(entry.copy);
        return fail(Outcome::Failed, text);
    }
    return {Outcome::Done, {}, entry};
}

QStringList CopyFolder::deleteOlder(qint64 startSecs)
{
    QList<CopyEntry> due;
    for (const CopyEntry& entry : m_list.entries()) {
        if (entry.ours && entry.startSecs < startSecs)
            due << entry;
    }
    std::sort(due.begin(), due.end(), [](const CopyEntry& a, const CopyEntry& b) { return a.startSecs < b.startSecs; });
    QStringList deleted;
    for (const CopyEntry& entry : due.mid(0, DeletionsPerCall)) {
        const QString path = QDir(m_options.target).filePath(entry.copy);
        const bool exists = QFileInfo::exists(path);
        const QByteArray hash = exists ? hashOf(path) : QByteArray();
        if (m_cancelled || (exists && hash.isEmpty()) || !QFileInfo::exists(m_list.path()))
            break; // the folder may be away: nothing is known of its files
        if (hash == entry.sha256 && !QFile::remove(path))
            break;
        if (hash == entry.sha256)
            deleted << entry.copy;
        m_list.remove(entry.copy);
    }
    return deleted;
}
