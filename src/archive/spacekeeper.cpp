#include "archive/spacekeeper.h"

#include "archive/archiveindex.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 ReserveSeconds = 3600;
constexpr qint64 LeastReserveSeconds = 120;
constexpr qint64 LeastReserveBytes = 50'000'000;
constexpr qint64 SmallVolumeShare = 10;
/// How long deleted bytes count as free although the disk does not show them. Some file systems give them back with
/// their next commit, 30 seconds later, and more would be deleted than need be.
constexpr qint64 FreedCountsMs = 60'000;
constexpr qint64 ReportEveryMs = 24 * 3600 * 1000LL;

} // namespace

SpaceKeeper::SpaceKeeper(ArchiveIndex* index, QObject* parent, std::function<qint64()> nowMs)
    : QObject(parent), m_index(index), m_nowMs(std::move(nowMs)), m_worker(this)
{
}

qint64 SpaceKeeper::reserve(qint64 bytesPerSecond, qint64 volumeBytes)
{
    const qint64 rate = std::max<qint64>(bytesPerSecond, 0);
    qint64 bytes = std::max(rate * ReserveSeconds, LeastReserveBytes);
    if (volumeBytes > 0)
        bytes = std::min(bytes, volumeBytes / SmallVolumeShare);
    return std::max(bytes, rate * LeastReserveSeconds);
}

/// What began before it may go.
qint64 SpaceKeeper::youngestMs() const
{
    const int days = std::max(AppSettings::instance().keepDays, 1); // the store may hold anything
    return QDateTime::fromMSecsSinceEpoch(m_nowMs()).addDays(-days).toMSecsSinceEpoch();
}

bool SpaceKeeper::mayDelete(const RecordInfo& record, qint64 youngestMs) const
{
    const qint64 startMs = record.startMs();
    return !record.inProgress && startMs != RecordInfo::UnknownMs && startMs < youngestMs &&
           !(m_isHeld && m_isHeld(record));
}

qint64 SpaceKeeper::deletableBytes() const
{
    const qint64 youngest = youngestMs();
    qint64 bytes = 0;
    const QList<RecordInfo> records = m_index->records();
    for (const RecordInfo& record : records)
        bytes += mayDelete(record, youngest) ? std::max<qint64>(record.bytes, 0) : 0;
    return bytes;
}

/// The next to go; an empty record when none may.
RecordInfo SpaceKeeper::oldest() const
{
    const qint64 youngest = youngestMs();
    const QList<RecordInfo> records = m_index->records();
    const QList<qint64> starts = m_index->startsMs();
    qsizetype found = -1;
    // One pass: the list is not always sorted.
    for (qsizetype i = 0; i < records.size(); ++i) {
        if ((found < 0 || starts.at(i) < starts.at(found)) && mayDelete(records.at(i), youngest) &&
            !m_refused.contains(records.at(i).filePath))
            found = i;
    }
    return found < 0 ? RecordInfo() : records.at(found);
}

void SpaceKeeper::onFreeSpace(qint64 freeBytes, qint64 volumeBytes)
{
    const AppSettings& settings = AppSettings::instance();
    if (freeBytes < 0 || !settings.deleteWhenFull || m_index->folder().isEmpty())
        return;
    m_freeBytes = freeBytes;
    m_reserveBytes = reserve(estimatedBytesPerSecond(settings), volumeBytes);
    const qint64 sinceFreedMs = m_nowMs() - m_freedAtMs;
    if (sinceFreedMs < 0 || sinceFreedMs >= FreedCountsMs)
        m_freedBytes = 0;
    if (m_deleting || !isShort())
        return;
    m_deleting = true;
    m_deleted = 0;
    m_refused.clear();
    deleteNext();
}

void SpaceKeeper::deleteNext()
{
    const RecordInfo record = oldest();
    if (record.filePath.isEmpty()) {
        endPass();
        reportNothingToDelete();
        return;
    }
    m_worker.post([record, folder = m_index->folder(), reply = m_worker.reply(), this] {
        const qint64 bytes = QFileInfo(record.filePath).size();
        Outcome outcome = Outcome::Deleted;
        if (!QFile::remove(record.filePath))
            outcome = QFileInfo::exists(record.filePath) ? Outcome::Refused : Outcome::Gone;
        reply([this, record, folder, outcome, bytes] { onDone(record, folder, outcome, bytes); });
    });
}

void SpaceKeeper::onDone(const RecordInfo& record, const QString& folder, Outcome outcome, qint64 bytes)
{
    const bool sameFolder = m_index->folder() == folder; // else its list is another one
    if (outcome == Outcome::Refused)
        m_refused.insert(record.filePath);
    else if (sameFolder)
        m_index->removeRecord(record.filePath);
    if (outcome == Outcome::Deleted) {
        ++m_deleted;
        m_freedBytes += bytes;
        m_freedAtMs = m_nowMs();
        Q_EMIT deleted(record.filePath);
    }
    // The settings may be other ones by now.
    if (sameFolder && AppSettings::instance().deleteWhenFull && isShort())
        deleteNext();
    else
        endPass();
}

void SpaceKeeper::endPass()
{
    m_deleting = false;
    if (m_deleted > 0)
        Q_EMIT logMessage(tr("Deleted %n recording(s), the oldest first, since the disk was full", nullptr, m_deleted));
}

/// The days promised are often what the disk holds just so: then it is short again with each hour, until the next
/// recording is old enough. That is no news.
void SpaceKeeper::reportNothingToDelete()
{
    const qint64 nowMs = m_nowMs();
    if (m_reportedAtMs != 0 && nowMs >= m_reportedAtMs && nowMs - m_reportedAtMs < ReportEveryMs)
        return;
    m_reportedAtMs = nowMs;
    Q_EMIT errorOccurred(
        tr("The disk is nearly full (%1 free), and there is no recording that may be deleted: none is older than %n "
           "day(s). Free some space, or let fewer days be kept (Settings, Output).",
           nullptr, std::max(AppSettings::instance().keepDays, 1))
            .arg(QLocale().formattedDataSize(m_freeBytes)));
}
