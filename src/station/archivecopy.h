#pragma once

#include "archive/recordinfo.h"
#include "process/worker.h"
#include "station/copyfolder.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

class ArchiveIndex;

/// Keeps a second copy of the recordings in another folder, on a disk or a share, as the settings ask for it. Each
/// closed file is copied when the machine has nothing better to do, the oldest first, and compared by its SHA-256.
///
/// The queue is what the index lists and the copy lacks, so it has no limit, survives a restart and costs nothing. A
/// folder that is away or full is tried again by itself. All that touches it runs on a thread of its own: one that
/// hangs holds neither the recording nor the end of the program. Does nothing at all while the settings ask for none.
class ArchiveCopy : public QObject {
    Q_OBJECT
public:
    /// What the copy takes from outside.
    struct Environment {
        QString memoryPath; ///< local file that remembers which folder holds our copies
        QString owner; ///< this computer and channel, as a part of file names
        std::function<qint64()> nowMs; ///< since the epoch
        std::chrono::milliseconds settle; ///< how long a file must not have changed before it is copied
        std::chrono::milliseconds retry; ///< pause after a failure
        std::chrono::milliseconds patience; ///< without any progress for that long, the folder counts as hanging
        std::function<void(const QString&)> beforeCompare = nullptr; ///< see CopyFolder::Options

        static Environment real();
    };
    /// \param index not owned, outlives the copy.
    explicit ArchiveCopy(ArchiveIndex* index, QObject* parent = nullptr, Environment environment = Environment::real());
    /// Waits for nothing.
    ~ArchiveCopy() override;

    bool isEnabled() const { return m_worker != nullptr; }
    /// Closed recordings that the copy lacks; 0 while there is no second copy. Until the folder has been read once,
    /// those that were closed since the program started.
    int filesBehind() const { return int(m_missing.size()); }
    /// Since when the copy has lacked something; invalid: it lacks nothing.
    QDateTime behindSince() const { return m_behindSince; }
    /// Why it does not go on, as a sentence; empty while it does.
    QString lastError() const { return m_error; }
    /// Path of the copy of this recording, as far as known from the last look; empty when there is none, or when the
    /// folder does not answer. Touches no disk.
    QString copyOf(const RecordInfo& record) const;
    /// What the original had when it was copied: one of another size is damaged. -1 when there is no such copy.
    qint64 copiedBytes(const RecordInfo& record) const;
    /// Why this folder cannot hold the second copy, as a sentence; empty when it may. Compares the names only.
    static QString problemOf(const QString& folder, const QString& recordingsFolder);

public Q_SLOTS:
    /// Follows the settings and the index's folder.
    void reload();

Q_SIGNALS:
    /// filesBehind() or lastError() has changed, or the second copy was switched on or off.
    void stateChanged();
    void logMessage(const QString& text);
    /// Once per outage.
    void errorOccurred(const QString& text);
    void copied(const CopyEntry& entry);
    /// The copy of this name was older than the settings allow.
    void deleted(const QString& copyName);

private:
    /// A copy that is there; without a name, of a recording that is gone.
    struct Known {
        QString name;
        qint64 bytes = -1;
    };
    void stop();
    void step();
    bool isFree();
    void post(std::function<std::function<void()>(CopyFolder&)> task);
    void look();
    void copyNext();
    void deleteOld();
    void onLooked(const CopyFolder::Found& found);
    void onCopied(const RecordInfo& record, const CopyFolder::Result& result);
    void findMissing();
    void setMissing(const QList<RecordInfo>& missing);
    void fail(const QString& text);
    void recover();
    QString problemText(const CopyFolder::Found& found) const;

    ArchiveIndex* m_index;
    Environment m_environment;
    qint64 m_createdMs;
    QString m_source;
    QString m_target; ///< empty: no second copy
    QString m_given; ///< the folder as the settings have it, for messages
    std::shared_ptr<CopyFolder> m_folder; ///< shared with the task under way
    std::unique_ptr<Worker> m_worker; ///< null: no second copy
    QTimer m_tick;
    QTimer m_soon; ///< joins what happens at once
    bool m_busy = false; ///< a task is under way
    bool m_known = false; ///< m_present is what the folder holds
    bool m_listChanged = true; ///< m_missing is to be found anew
    QHash<QString, Known> m_present; ///< by CopyEntry::key() of each recording that is copied
    QList<RecordInfo> m_missing; ///< the oldest first
    QSet<QString> m_passedOver; ///< keys of recordings that cannot be read, until the next look
    QSet<QString> m_unsettled; ///< keys of recordings that may still be written, until the next tick
    QDateTime m_behindSince;
    QString m_error;
    qint64 m_failedAtMs = 0; ///< on the clock of m_running
    quint64 m_progress = 0;
    QElapsedTimer m_running;
    QElapsedTimer m_sinceProgress;
    QElapsedTimer m_sinceLook; ///< invalid: a look is due
    QElapsedTimer m_sinceDeletion; ///< invalid: old copies may be there
    QElapsedTimer m_pause; ///< invalid: none
};
