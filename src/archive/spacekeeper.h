#pragma once

#include "archive/recordinfo.h"
#include "process/worker.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

class ArchiveIndex;

/// Deletes the oldest recordings when the disk fills up, if the settings ask for it: a logger that stops because of
/// last year's files is worse than one that keeps fewer of them. Knows files only through the index. Never deletes the
/// file in progress, what is younger than the days that the settings promise, or what somebody holds.
///
/// Asks for nothing by itself: onFreeSpace() is to be called every 30 seconds and whenever a file begins. Files are
/// deleted one after the other on a thread of their own, since a disk may take long over a large one.
class SpaceKeeper : public QObject {
    Q_OBJECT
public:
    /// \param index not owned, outlives the keeper. \param nowMs the clock, ms since the epoch.
    explicit SpaceKeeper(ArchiveIndex* index, QObject* parent = nullptr,
                         std::function<qint64()> nowMs = QDateTime::currentMSecsSinceEpoch);

    /// The free bytes that are kept: an hour of recording, so that somebody can still react when nothing may be
    /// deleted, and at least 50 MB for the index and the journal; not more than a tenth of a small volume. But always
    /// two minutes of recording, four times what is written between two answers about the free space.
    /// \param volumeBytes size of the volume; 0 or less: unknown.
    static qint64 reserve(qint64 bytesPerSecond, qint64 volumeBytes);

    /// Has this asked before a recording is deleted; true: it must stay. Empty: nothing is held.
    void setHeld(std::function<bool(const RecordInfo&)> isHeld) { m_isHeld = std::move(isHeld); }
    /// The bytes of all recordings that may be deleted for want of space, whatever the option says: with it, they are
    /// as good as free.
    qint64 deletableBytes() const;

public Q_SLOTS:
    /// Deletes what the reserve needs, if the settings ask for it. \param freeBytes of the volume that holds the
    /// index's folder; negative: unknown, and nothing is deleted. \param volumeBytes as for reserve().
    void onFreeSpace(qint64 freeBytes, qint64 volumeBytes);

Q_SIGNALS:
    /// One line for a pass that deleted anything. The free space is another one now.
    void logMessage(const QString& text);
    /// Nothing may be deleted although the disk is about to be full. Once per day at most.
    void errorOccurred(const QString& text);
    /// This recording has been deleted to make room.
    void deleted(const QString& filePath);

private:
    /// What became of a file that was to be deleted.
    enum class Outcome { Deleted, Gone, Refused };

    bool mayDelete(const RecordInfo& record, qint64 youngestMs) const;
    qint64 youngestMs() const;
    RecordInfo oldest() const;
    bool isShort() const { return m_freeBytes + m_freedBytes < m_reserveBytes; }
    void deleteNext();
    void onDone(const RecordInfo& record, const QString& folder, Outcome outcome, qint64 bytes);
    void endPass();
    void reportNothingToDelete();

    ArchiveIndex* m_index;
    std::function<qint64()> m_nowMs;
    std::function<bool(const RecordInfo&)> m_isHeld;
    Worker m_worker;
    bool m_deleting = false; ///< a pass is under way
    int m_deleted = 0; ///< files deleted by this pass
    QSet<QString> m_refused; ///< paths that this pass could not delete
    qint64 m_freeBytes = 0; ///< the last answer
    qint64 m_reserveBytes = 0;
    qint64 m_freedBytes = 0; ///< deleted lately, see onFreeSpace()
    qint64 m_freedAtMs = 0;
    qint64 m_reportedAtMs = 0; ///< when errorOccurred() was last emitted; 0: never
};
