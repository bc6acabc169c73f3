#pragma once

#include <QDateTime>
#include <QSortFilterProxyModel>

class ArchiveModel;

/// Shows the recordings that overlap a range of time, both ends included, and sorts them by the values behind the
/// texts. A recording of unknown length counts as a moment, and one of unknown start is in no range.
class ArchiveRangeFilter : public QSortFilterProxyModel {
    Q_OBJECT
public:
    /// \param source not owned, outlives the filter.
    explicit ArchiveRangeFilter(ArchiveModel* source, QObject* parent = nullptr);

    /// Local times. If one of them is invalid, there is no range, and every row shows.
    void setRange(const QDateTime& from, const QDateTime& to);
    void clearRange();
    bool hasRange() const { return m_enabled; }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    ArchiveModel* m_source;
    qint64 m_fromMs = 0;
    qint64 m_toMs = 0;
    bool m_enabled = false;
};
