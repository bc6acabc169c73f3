#pragma once

#include "station/copylist.h"

#include <QStringList>

#include <atomic>
#include <chrono>
#include <functional>

class QFile;
struct RecordInfo;

/// The folder of the second copy: what is in it, and how a file gets there and goes. Its calls wait for disk and share
/// without a limit, so they belong on a thread of their own; only cancel() and progress() may be called from another.
/// Not otherwise thread-safe.
///
/// Beside the copies, the folder has ".tidewell" with the list of what was put there, one per computer and channel, and
/// the file that is being copied: it gets its name when it is complete, on the disk and compared.
class CopyFolder {
public:
    struct Options {
        QString source; ///< the recordings folder
        QString target; ///< the copy's folder
        QString owner; ///< part of file names: this computer and channel
        QString memoryPath; ///< local file that remembers which folder holds our copies
        /// A file must not have changed for this long: an encoder that outlived a crash may still be writing it.
        std::chrono::milliseconds settle;
        /// Called with the path of a finished copy before it is compared. May be null.
        std::function<void(const QString&)> beforeCompare = nullptr;
    };
    explicit CopyFolder(Options options);

    enum class Problem {
        None,
        Away, ///< the folder is not there
        NotOurs, ///< the folder is there, but not the copies: another disk is, or none is mounted
        Inside, ///< the folder is the recordings folder or inside it
        Failed, ///< see the text
    };
    struct Found {
        Problem problem = Problem::None;
        QString text; ///< the system's, in case of Failed
        QList<CopyEntry> present; ///< copies that are there in their full length
        QStringList changed; ///< names of copies that have another length now; they are left alone
    };
    /// Looks at the whole folder. Makes it if it was never used before; one that was and is missing is a drive that is
    /// away, and must not be replaced by a folder.
    Found look();

    enum class Outcome {
        Done, ///< complete, on the disk, compared
        Later, ///< the original may still be written
        Gone, ///< there is no such original any more
        Unreadable, ///< the original cannot be read; see the text
        Differs, ///< what was read back is not what was written
        Full, ///< the folder's volume has no room for it
        Failed, ///< the folder takes no file; see the text
        Cancelled,
    };
    struct Result {
        Outcome outcome = Outcome::Done;
        QString text;
        CopyEntry entry; ///< in case of Done
    };
    Result copy(const RecordInfo& record);

    /// Deletes copies of recordings that began earlier than this, the oldest first, a few per call. Before it does, it
    /// compares them with what was put there: a file that somebody has changed stays. \return names of those deleted.
    QStringList deleteOlder(qint64 startSecs);

    /// All calls end soon, with nothing done.
    void cancel() { m_cancelled = true; }
    /// A number that grows while something is being done.
    quint64 progress() const { return m_progress; }

private:
    QString hiddenPath(const QString& name) const;
    Problem prepare();
    bool isRemembered() const;
    void remember() const;
    void removeParts() const;
    Result transfer(QFile& original, CopyEntry entry);
    QByteArray hashOf(QFile& file);
    QByteArray hashOf(const QString& path, bool fromDisk = false);

    Options m_options;
    QString m_partPath; ///< the file being copied
    CopyList m_list;
    std::atomic<bool> m_cancelled = false;
    std::atomic<quint64> m_progress = 0;
};
