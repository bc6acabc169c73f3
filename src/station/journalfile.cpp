#include "station/journalfile.h"

#include "encode/durable.h"

#include <QDir>

#include <algorithm>

namespace {

constexpr qint64 TailBytes = 64 * 1024; // more than the longest line has

/// The last lines of the file that begin within `bytes` before `end`, whole ones only.
QByteArray tail(QFile& file, qint64 end, qint64 bytes)
{
    const qint64 from = std::max<qint64>(0, end - bytes);
    if (!file.seek(from))
        return {};
    QByteArray text = file.read(end - from);
    if (from > 0) // it begins in the middle of a line
        text.remove(0, text.indexOf('\n') + 1);
    return text;
}

} // namespace

JournalFile::JournalFile(const QString& folder) : m_folder(folder) {}

QStringList JournalFile::namesIn(const QString& folder)
{
    QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
    // Not by a name filter: that is a regular expression, which a worker must not use.
    names.removeIf([](const QString& name) { return !name.endsWith(QLatin1String(".jsonl")); });
    return names;
}

QStringList JournalFile::files() const
{
    return namesIn(m_folder);
}

bool JournalFile::append(const JournalEntry& entry)
{
    if (m_waiting.size() < MaxWaiting)
        m_waiting.append(entry);
    else
        ++m_dropped;
    while (!m_waiting.isEmpty()) {
        if (!write(m_waiting.constFirst()))
            return false;
        m_waiting.removeFirst();
    }
    if (m_dropped > 0) {
        if (!write(JournalEntry::now(QStringLiteral("journal.lost"), {}, {{QStringLiteral("lines"), m_dropped}})))
            return false;
        m_dropped = 0;
    }
    return syncToDisk(m_file);
}

bool JournalFile::write(const JournalEntry& entry)
{
    recoverChain();
    if (!openFile(JournalEntry::fileName(entry.utcMs)))
        return false;
    const QByteArray line = entry.toLine(m_sequence + 1, m_lastHash);
    const qint64 before = m_file.size();
    if (m_file.write(line + '\n') != line.size() + 1) {
        m_file.resize(before); // a full disk takes the first part of a line
        return false;
    }
    ++m_sequence;
    m_lastHash = JournalEntry::hash(line);
    return true;
}

bool JournalFile::openFile(const QString& name)
{
    const QString path = QDir(m_folder).filePath(name);
    // What is written into a deleted file is lost.
    if (m_file.isOpen() && m_file.fileName() == path && QFileInfo::exists(path))
        return true;
    m_file.close();
    m_file.setFileName(path);
    QDir().mkpath(m_folder);
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        return false;
    // A line cut by a power failure must not swallow the next one.
    if (m_file.size() > 0 && m_file.seek(m_file.size() - 1) && m_file.read(1) != "\n")
        return m_file.write("\n") == 1;
    return true;
}

void JournalFile::recoverChain()
{
    if (m_recovered)
        return;
    m_recovered = true;
    // Not simply the newest file by its name: with a clock that was wrong, lines went into another month.
    for (const QString& name : files()) {
        QFile file(QDir(m_folder).filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QByteArray text = tail(file, file.size(), TailBytes);
        if (text.endsWith('\n'))
            text.chop(1);
        const QList<QByteArray> lines = text.split('\n');
        qint64 sequence = 0;
        qint64 cut = 0; // lines at the end that are none, as after a power cut
        for (auto line = lines.crbegin(); line != lines.crend() && sequence == 0; ++line, ++cut)
            sequence = JournalEntry::sequenceOf(*line);
        if (sequence == 0 || sequence <= m_sequence)
            continue;
        m_sequence = sequence + cut - 1;
        m_lastHash = JournalEntry::hash(lines.constLast());
    }
}

QList<JournalEntry> JournalFile::linesBefore(qint64 utcMs, int atMost) const
{
    QList<JournalEntry> lines; // newest first
    qint64 searched = 0;
    const QStringList names = files();
    for (auto name = names.crbegin(); name != names.crend() && lines.size() < atMost; ++name) {
        QFile file(QDir(m_folder).filePath(*name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QByteArray text;
        for (qint64 end = file.size(); end > 0 && searched < MaxSearched; end -= text.size()) {
            text = tail(file, end, TailBytes);
            searched += TailBytes;
            if (text.isEmpty()) // a line that is longer than any of ours
                break;
            const QList<QByteArray> found = text.split('\n');
            for (auto line = found.crbegin(); line != found.crend() && lines.size() < atMost; ++line) {
                const auto entry = JournalEntry::fromLine(*line);
                if (entry && entry->utcMs < utcMs && entry->isLogLine())
                    lines.append(*entry);
            }
            if (lines.size() >= atMost)
                break;
        }
    }
    std::reverse(lines.begin(), lines.end());
    return lines;
}

QStringList JournalFile::unhashedFiles() const
{
    QStringList unhashed;
    const QStringList names = files();
    for (const QString& name : names.mid(std::max<qsizetype>(0, names.size() - 2))) {
        QFile file(QDir(m_folder).filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        while (!file.atEnd()) {
            const QByteArray line = file.readLine(MaxSearched);
            if (!line.contains("\"file.")) // most lines are others, and parsing takes its time
                continue;
            const auto entry = JournalEntry::fromLine(line);
            const QString recording = entry ? entry->fields.value(QLatin1String("file")).toString() : QString();
            if (recording.isEmpty())
                continue;
            if (entry->event == QLatin1String("file.closed"))
                unhashed.append(recording);
            else if (entry->event != QLatin1String("file.opened")) // hashed, or deleted
                unhashed.removeAll(recording);
        }
    }
    return unhashed;
}
