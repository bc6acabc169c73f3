#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

/// One recording in the folder of the second copy.
struct CopyEntry {
    QString file; ///< name of the original
    qint64 startSecs = 0; ///< when the original began, since the epoch
    QString copy; ///< name of the copy; another one where a foreign file had the name
    qint64 bytes = 0;
    QByteArray sha256; ///< in hexadecimal
    bool ours = true; ///< false: the file was there already, with the same content, and is never deleted

    /// The recording that this is a copy of. The name alone does not tell: a counter in the template comes round.
    static QString key(const QString& file, qint64 startSecs);
    QString key() const { return key(file, startSecs); }
};

/// What was put into the folder of the second copy, as a file of JSON lines in it. Lines are only appended and synced,
/// so that a power cut costs the last one at most. Waits for the disk without a limit; not thread-safe.
class CopyList {
public:
    explicit CopyList(QString path) : m_path(std::move(path)) {}

    const QString& path() const { return m_path; }
    /// Reads the file; lines that make no sense are left out. When most of it is about copies that are gone, it is
    /// written anew. A missing file is created. \return false when it cannot be read or written.
    bool load();
    /// \return false when the disk does not take it; the entry is then not in the list.
    bool add(const CopyEntry& entry);
    /// Forgets the copy of this name. \return whether the disk has taken that.
    bool remove(const QString& copy);
    /// By the name of the copy.
    const QHash<QString, CopyEntry>& entries() const { return m_entries; }

private:
    bool append(const QByteArray& text);
    bool rewrite() const;

    QString m_path;
    QHash<QString, CopyEntry> m_entries;
};
