#include "ui/archivemodel.h"

#include "archive/archiveindex.h"
#include "ui/icons.h"

#include <QLocale>

#include <algorithm>

namespace {

QDateTime endOf(const RecordInfo& record)
{
    const qint64 end = record.endMs();
    return end == RecordInfo::UnknownMs ? QDateTime() : QDateTime::fromMSecsSinceEpoch(end);
}

} // namespace

ArchiveModel::ArchiveModel(ArchiveIndex* index, QObject* parent)
    : QAbstractTableModel(parent),
      m_index(index),
      m_recordingIcon(Icons::load(QStringLiteral("recording"))),
      m_audioIcon(Icons::load(QStringLiteral("audio")))
{
    if (m_index)
        connect(m_index, &ArchiveIndex::changed, this, &ArchiveModel::reload);
    reload();
}

void ArchiveModel::reload()
{
    beginResetModel();
    m_rows.clear();
    const QList<RecordInfo> records = m_index ? m_index->records() : QList<RecordInfo>();
    const QList<qint64> starts = m_index ? m_index->startsMs() : QList<qint64>();
    m_rows.reserve(records.size());
    for (qsizetype i = 0; i < records.size(); ++i)
        m_rows.append({records.at(i), starts.at(i)});
    endResetModel();
}

int ArchiveModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ArchiveModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

RecordInfo ArchiveModel::record(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).record : RecordInfo();
}

QVariant ArchiveModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    const QString headers[ColumnCount] = {tr("Date"),   tr("Started"), tr("Stopped"),
                                          tr("Length"), tr("File"),    tr("Path")};
    return headers[section];
}

QVariant ArchiveModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RecordInfo& record = m_rows.at(index.row()).record;
    switch (role) {
    case Qt::DisplayRole:
        return displayText(record, index.column());
    case Qt::DecorationRole:
        return index.column() == Date ? QVariant(record.inProgress ? m_recordingIcon : m_audioIcon) : QVariant();
    case Qt::ToolTipRole:
        return toolTip(record);
    case Qt::TextAlignmentRole:
        return index.column() == Length ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    case PathRole:
        return record.filePath;
    case StartRole:
        return record.start;
    case EndRole:
        return endOf(record);
    case DurationRole:
        return record.durationMs;
    default:
        return {};
    }
}

QString ArchiveModel::displayText(const RecordInfo& record, int column) const
{
    const QLocale locale;
    switch (column) {
    case Date:
        return locale.toString(record.start.date(), QLocale::ShortFormat);
    case Started:
        return locale.toString(record.start.time(), QLocale::ShortFormat);
    case Stopped: {
        const QDateTime end = endOf(record);
        return end.isValid() ? locale.toString(end.time(), QLocale::ShortFormat) : QStringLiteral("-");
    }
    case Length:
        return lengthText(record.durationMs);
    case File:
        return record.fileName;
    default:
        return record.filePath;
    }
}

QString ArchiveModel::toolTip(const RecordInfo& record) const
{
    return QStringLiteral("%1\n%2\n%3")
        .arg(record.filePath, QLocale().formattedDataSize(record.bytes), lengthText(record.durationMs));
}

QString ArchiveModel::lengthText(qint64 durationMs)
{
    const qint64 seconds = std::max<qint64>(durationMs, 0) / 1000;
    const auto twoDigits = [](qint64 value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(seconds / 3600), twoDigits(seconds / 60 % 60), twoDigits(seconds % 60));
}

bool ArchiveModel::lessThan(int leftRow, int rightRow, Column column) const
{
    const Row& left = m_rows.at(leftRow);
    const Row& right = m_rows.at(rightRow);
    switch (column) {
    case Stopped:
        return left.record.endMs(left.startMs) < right.record.endMs(right.startMs);
    case Length:
        return left.record.durationMs < right.record.durationMs;
    case File:
    case Path: // in one folder, so that what differs is the name
        return left.record.fileName < right.record.fileName;
    default:
        return left.startMs < right.startMs;
    }
}
