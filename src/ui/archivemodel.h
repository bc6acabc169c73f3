#pragma once

#include "archive/recordinfo.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QList>
#include <QPointer>

class ArchiveIndex;

/// The archive as a table, one row per recording, in the order of the index.
class ArchiveModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Date, Started, Stopped, Length, File, Path, ColumnCount };
    /// These roles give the same for every column of a row.
    enum Role {
        PathRole = Qt::UserRole, ///< QString, absolute
        StartRole, ///< QDateTime, local
        EndRole, ///< QDateTime; invalid when start or duration is unknown
        DurationRole, ///< qint64, milliseconds
    };

    /// \param index not owned; may be null.
    explicit ArchiveModel(ArchiveIndex* index, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// An empty record for a row out of range.
    RecordInfo record(int row) const;
    /// record(row).startMs(), without computing it anew.
    qint64 startMs(int row) const { return m_rows.at(row).startMs; }
    /// Compares two rows by the values behind the texts: times and lengths as numbers.
    bool lessThan(int leftRow, int rightRow, Column column) const;

    /// A length as hours, minutes and seconds, such as 1:02:05; a negative one as 0:00:00.
    static QString lengthText(qint64 durationMs);

public Q_SLOTS:
    void reload();

private:
    struct Row {
        RecordInfo record;
        qint64 startMs = 0;
    };

    QString displayText(const RecordInfo& record, int column) const;
    QString toolTip(const RecordInfo& record) const;

    QPointer<ArchiveIndex> m_index;
    QList<Row> m_rows;
    QIcon m_recordingIcon;
    QIcon m_audioIcon;
};
