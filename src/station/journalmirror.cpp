#include "station/journalmirror.h"

#include "encode/durable.h"
#include "station/hiddenfolder.h"
#include "station/journalfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// Other computers' files that one month may hold.
constexpr int MaxNumber = 99;
constexpr qint64 BlockBytes = 1024 * 1024;

/// How much of `copy` is the beginning of `original`, up to a line's end; -1 when it is something else.
qint64 commonBytes(QFile& original, QFile& copy)
{
    qint64 common = 0;
    while (!copy.atEnd()) {
        const QByteArray line = copy.readLine();
        const QByteArray ours = original.readLine();
        if (line == ours)
            common += line.size();
        else
            return line.endsWith('\n') || !copy.atEnd() || !ours.startsWith(line) ? -1 : common;
    }
    return common;
}

} // namespace

bool JournalMirror::append(QFile& original, const QString& copyPath, qint64 from)
{
    QFile copy(copyPath);
    if (!copy.open(QIODevice::ReadWrite) || !copy.resize(from) || !original.seek(from) || !copy.seek(from))
        return false;
    while (!original.atEnd()) {
        const QByteArray block = original.read(BlockBytes);
        if (block.isEmpty() || copy.write(block) != block.size())
            return false;
    }
    if (!syncToDisk(copy))
        return false;
    m_known.insert(original.fileName(), {copyPath, copy.size()});
    return true;
}

bool JournalMirror::updateFile(const QString& sourcePath, const QDir& target, const QString& baseName)
{
    QFile original(sourcePath);
    if (!original.open(QIODevice::ReadOnly))
        return false;
    const Copy known = m_known.value(sourcePath);
    if (!known.path.isEmpty() && QFileInfo(known.path).size() == known.bytes)
        return known.bytes == original.size() || append(original, known.path, known.bytes);

    for (int number = 1; number <= MaxNumber; ++number) {
        const QString name =
            number == 1 ? baseName + QStringLiteral(".jsonl") : QStringLiteral("%1.%2.jsonl").arg(baseName).arg(number);
        QFile copy(target.filePath(name));
        if (!copy.open(QIODevice::ReadWrite))
            return false;
        original.seek(0);
        if (const qint64 common = commonBytes(original, copy); common >= 0)
            return append(original, copy.fileName(), common);
    }
    return false;
}

bool JournalMirror::update()
{
    if (!HiddenFolder::make(m_target))
        return false;
    bool complete = true;
    for (const QString& name : JournalFile::namesIn(m_source))
        complete =
            updateFile(QDir(m_source).filePath(name), QDir(m_target), QFileInfo(name).completeBaseName()) && complete;
    return complete;
}
