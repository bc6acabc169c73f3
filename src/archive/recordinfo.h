#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

/// One recording file. The file name is its key in the archive.
struct RecordInfo {
    QString fileName; ///< without folder
    QString filePath; ///< absolute
    QDateTime start; ///< local time; invalid when unknown
    qint64 durationMs = 0; ///< 0 or less: unknown
    qint64 bytes = 0; ///< size on disk
    bool inProgress = false; ///< still being written: never saved, never deleted by housekeeping
};
Q_DECLARE_METATYPE(RecordInfo)
