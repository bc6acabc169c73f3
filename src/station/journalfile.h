#pragma once

#include "station/journalentry.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>
#include <QStringList>

/// The journal on the local disk: appends lines to the file of their month and carries the chain of hashes on, over
/// the end of a month and a restart. A line that was cut by a power failure stays as it is, and the next one follows on
/// a line of its own. Not thread-safe; its calls wait for the disk.
class JournalFile {
public:
    /// The most lines that wait while the disk takes none.
    static constexpr qsizetype MaxWaiting = 10'000;
    /// How far back linesBefore() looks at most: some eight months of hourly files.
    static constexpr qint64 MaxSearched = 8 * 1024 * 1024;

    /// \param folder made when the first line is written.
    explicit JournalFile(const QString& folder);

    /// Writes the lines that wait and then this one, and waits until they are on the disk.
    /// \return false when the disk did not take all; they are tried again with the next one.
    bool append(const JournalEntry& entry);
    /// The newest log lines and errors from before this moment, oldest first. Looks at MaxSearched bytes at most.
    QList<JournalEntry> linesBefore(qint64 utcMs, int atMost) const;
    /// The files of "file.closed" without a "file.hashed" behind it, in the newest month and the one before.
    QStringList unhashedFiles() const;
    /// Names of the journal's files in this folder, oldest month first.
    static QStringList namesIn(const QString& folder);

private:
    bool write(const JournalEntry& entry);
    bool openFile(const QString& name);
    void recoverChain();
    QStringList files() const;

    QString m_folder;
    QFile m_file;
    qint64 m_sequence = 0; ///< of the last line written
    QByteArray m_lastHash; ///< of the last line written; empty before the very first
    QList<JournalEntry> m_waiting;
    int m_dropped = 0; ///< lines that could not even wait
    bool m_recovered = false;
};
