#pragma once

#include <QCoreApplication>
#include <QLockFile>
#include <QString>

#include <memory>

/// A recordings folder belongs to one running channel: two would write one index, and each would delete by its own
/// rules. The lock lies in ".tidewell" of the folder, with the owner's computer and channel beside it.
class FolderLock {
    Q_DECLARE_TR_FUNCTIONS(FolderLock)
public:
    /// Releases the folder held before, if it is another one. A lock whose process has died on this computer is taken
    /// over. \return why the folder must not be recorded into, as a sentence. Empty when the lock is ours now, and when
    /// no lock can be made there at all: the recording will then fail and report that itself.
    QString take(const QString& recordingsFolder);
    void release();
    /// Whether the lock is held, as far as known.
    bool isHeld() const { return m_lock != nullptr; }

private:
    bool isStillOurs() const;
    QString refusal() const;

    QString m_folder; ///< ".tidewell" of the folder held; empty: none
    std::unique_ptr<QLockFile> m_lock;
};
