#include "archive/archiveindex.h"

#include "archive/durationprobe.h"
#include "archive/recordsfile.h"
#include "encode/durable.h"
#include "settings/codectable.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// Some two million records, more than two centuries of hourly files. What is larger was not written by us, and
/// parsing it would take several times its size in memory; the folder itself then tells what there is.
constexpr qint64 MaxIndexBytes = 256 * 1024 * 1024;

/// A record of a file that the index does not know yet, or of which it knows no start but perhaps a length.
RecordInfo newRecord(const QFileInfo& file, const QString& path, qint64 durationMs)
{
    RecordInfo record;
    record.fileName = file.fileName();
    record.filePath = path;
    record.start = ArchiveIndex::startFromFileName(record.fileName, {});
    if (!record.start.isValid())
        record.start = file.birthTime();
    if (!record.start.isValid())
        record.start = file.lastModified();
    record.durationMs = durationMs;
    return record;
}

} // namespace

ArchiveIndex::Entry::Entry(RecordInfo info) : record(std::move(info)), startMs(record.startMs()) {}

ArchiveIndex::ArchiveIndex(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<RecordInfo>();
}

void ArchiveIndex::setFolder(const QString& path)
{
    if (path == m_folder)
        return;
    m_folder = path;
    load();
}

void ArchiveIndex::load()
{
    m_entries.clear();
    if (m_folder.isEmpty()) {
        Q_EMIT changed(); // a scan of no folder would not tell that the list is empty now
        return;
    }
    QFile file(indexPath());
    if (file.open(QIODevice::ReadOnly) && file.size() <= MaxIndexBytes) {
        for (const RecordInfo& record : RecordsFile::fromJson(file.read(file.size()), m_folder))
            m_entries.append(Entry(record));
    }
    file.close();
    rescan();
}

void ArchiveIndex::save()
{
    if (m_folder.isEmpty())
        return;
    QDir().mkpath(m_folder);
    QSaveFile file(indexPath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    const QByteArray json = RecordsFile::toJson(records());
    // QSaveFile takes no notice of a write cut short, as on a full disk, and would put the rest in the old one's place.
    // A share may tell only when asked to sync.
    if (file.write(json) != json.size() || !file.flush() || !syncToDisk(file))
        file.cancelWriting();
    file.commit();
}

QList<ArchiveIndex::Entry> ArchiveIndex::scannedFolder() const
{
    QHash<QStringView, const Entry*> known;
    known.reserve(m_entries.size());
    // Backwards, so that the first of a name wins.
    for (auto entry = m_entries.crbegin(); entry != m_entries.crend(); ++entry)
        known.insert(entry->record.fileName, &*entry);

    QList<Entry> entries;
    entries.reserve(m_entries.size());
    const QDir folder(m_folder);
    QDirIterator files(m_folder, QDir::Files);
    while (files.hasNext()) {
        files.next();
        const QFileInfo file = files.fileInfo();
        const QString name = file.fileName();
        if (!isAudioFile(name) || name == m_openFile)
            continue;
        const QString path = folder.absoluteFilePath(name);
        const Entry* old = known.value(name);
        if (old && old->record.start.isValid()) {
            entries.append(*old);
            entries.last().record.filePath = path;
            entries.last().record.inProgress = false;
        } else {
            entries.append(Entry(newRecord(file, path, old ? old->record.durationMs : 0)));
        }
        RecordInfo& record = entries.last().record;
        record.bytes = file.size();
        if (record.durationMs <= 0)
            record.durationMs = probeDurationMs(path);
    }
    return entries;
}

void ArchiveIndex::rescan()
{
    if (m_folder.isEmpty())
        return;
    m_entries = QDir(m_folder).exists() ? scannedFolder() : QList<Entry>();
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.startMs < b.startMs; });
    Q_EMIT changed();
}

void ArchiveIndex::addRecord(const RecordInfo& record)
{
    const auto same = std::find_if(m_entries.begin(), m_entries.end(),
                                   [&](const Entry& entry) { return entry.record.fileName == record.fileName; });
    if (same != m_entries.end())
        *same = Entry(record);
    else
        m_entries.append(Entry(record));
    save();
    Q_EMIT changed();
}

void ArchiveIndex::removeRecord(const QString& filePath)
{
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&](const Entry& entry) { return entry.record.filePath == filePath; });
    if (found != m_entries.cend())
        m_entries.erase(found);
    save();
    Q_EMIT changed();
}

void ArchiveIndex::removeRecords(const QStringList& filePaths)
{
    const QSet<QString> paths(filePaths.begin(), filePaths.end());
    m_entries.removeIf([&](const Entry& entry) { return paths.contains(entry.record.filePath); });
    save();
    Q_EMIT changed();
}

QList<RecordInfo> ArchiveIndex::records() const
{
    QList<RecordInfo> records;
    records.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        records.append(entry.record);
    return records;
}

QList<qint64> ArchiveIndex::startsMs() const
{
    QList<qint64> starts;
    starts.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        starts.append(entry.startMs);
    return starts;
}

RecordInfo ArchiveIndex::recordAt(const QDateTime& moment) const
{
    if (!moment.isValid())
        return {};
    const qint64 at = moment.toMSecsSinceEpoch();
    const Entry* newest = nullptr;
    const Entry* covering = nullptr; // the earliest of known length that covers the moment
    // One pass instead of a sorted copy: the list is not always sorted.
    for (const Entry& entry : m_entries) {
        if (!entry.record.start.isValid())
            continue;
        if (!newest || entry.startMs >= newest->startMs)
            newest = &entry;
        const bool covers = entry.startMs <= at && at < entry.record.endMs(entry.startMs);
        if (covers && (!covering || entry.startMs < covering->startMs))
            covering = &entry;
    }
    const bool runningAt =
        newest && newest->record.durationMs <= 0 && newest->startMs <= at && at < QDateTime::currentMSecsSinceEpoch();
    if (!covering && runningAt)
        covering = newest;
    return covering ? covering->record : RecordInfo();
}

bool ArchiveIndex::isAudioFile(const QString& fileName)
{
    return std::any_of(Codecs.begin(), Codecs.end(), [&fileName](const CodecRow& codec) {
        const QLatin1String extension(codec.extension);
        const auto dot = fileName.size() - extension.size() - 1;
        return dot >= 0 && fileName.at(dot) == u'.' && fileName.endsWith(extension, Qt::CaseInsensitive);
    });
}

QDateTime ArchiveIndex::startFromFileName(const QString& fileName, const QDateTime& fallback)
{
    static const QRegularExpression pattern(QStringLiteral("(\\d{4})(\\d{2})(\\d{2})\\D?(\\d{2})(\\d{2})(\\d{2})"));
    const QRegularExpressionMatch match = pattern.match(fileName);
    const auto number = [&](int group) { return match.capturedView(group).toInt(); };
    const QDate date(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    if (!match.hasMatch() || !date.isValid() || !time.isValid())
        return fallback;
    const QDateTime start(date, time);
    // A time that the clocks skip in spring is invalid to this Qt; its moment then is what the old offset makes of it.
    return start.isValid() ? start : QDateTime::fromMSecsSinceEpoch(start.toMSecsSinceEpoch());
}

QString ArchiveIndex::indexPath() const
{
    return QDir(m_folder).filePath(QStringLiteral("records.json"));
}
