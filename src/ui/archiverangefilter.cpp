#include "ui/archiverangefilter.h"

#include "ui/archivemodel.h"

#include <algorithm>

ArchiveRangeFilter::ArchiveRangeFilter(ArchiveModel* source, QObject* parent)
    : QSortFilterProxyModel(parent), m_source(source)
{
    setSourceModel(source);
}

void ArchiveRangeFilter::setRange(const QDateTime& from, const QDateTime& to)
{
    m_enabled = from.isValid() && to.isValid();
    m_fromMs = from.toMSecsSinceEpoch();
    m_toMs = to.toMSecsSinceEpoch();
    invalidate(); // not the filter alone: that takes rows out one stretch at a time, and a sorted list has thousands
}

void ArchiveRangeFilter::clearRange()
{
    m_enabled = false;
    invalidate();
}

bool ArchiveRangeFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    Q_UNUSED(parent)
    if (!m_enabled)
        return true;
    const RecordInfo& record = m_source->record(row);
    if (!record.start.isValid())
        return false;
    const qint64 start = m_source->startMs(row);
    return start <= m_toMs && (start >= m_fromMs || record.endMs(start) >= m_fromMs);
}

bool ArchiveRangeFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return m_source->lessThan(left.row(), right.row(), ArchiveModel::Column(left.column()));
}
