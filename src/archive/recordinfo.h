#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

#include <algorithm>
#include <limits>

/// One recording file. The file name is its key in the archive.
struct RecordInfo {
    QString fileName; ///< without folder
    QString filePath; ///< absolute
    QDateTime start; ///< local time; invalid when unknown
    qint64 durationMs = 0; ///< 0 or less: unknown
    qint64 bytes = 0; ///< size on disk
    bool inProgress = false; ///< still being written: never saved, never deleted by housekeeping

    /// Stands for an unknown moment; sorts before all others.
    static constexpr qint64 UnknownMs = std::numeric_limits<qint64>::min();

    /// Start in ms since the epoch, or UnknownMs. A local QDateTime asks the time zone for that at each call, which
    /// takes 0.15 s or more for 100,000 of them: long lists keep the number.
    qint64 startMs() const { return start.isValid() ? start.toMSecsSinceEpoch() : UnknownMs; }
    /// End in ms since the epoch; UnknownMs when the start or the length is unknown. A damaged index may hold any
    /// length: the end is the largest number at most. \param knownStart what startMs() gave.
    qint64 endMs(qint64 knownStart) const
    {
        if (knownStart == UnknownMs || durationMs <= 0)
            return UnknownMs;
        return knownStart + std::min(durationMs, std::numeric_limits<qint64>::max() - std::max<qint64>(knownStart, 0));
    }
    qint64 endMs() const { return endMs(startMs()); }
};
Q_DECLARE_METATYPE(RecordInfo)
