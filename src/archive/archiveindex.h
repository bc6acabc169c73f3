#pragma once

#include "archive/recordinfo.h"

#include <QList>
#include <QObject>

/// The list of recordings in one folder, kept in "records.json" inside it and reconciled with the files that are really
/// there. What is on disk is the truth: files without an entry join, entries without a file drop out.
/// Nothing here reports errors: an unreadable index is rebuilt from the folder, a failed save leaves the old one whole.
class ArchiveIndex : public QObject {
    Q_OBJECT
public:
    explicit ArchiveIndex(QObject* parent = nullptr);

    /// Another folder is loaded at once; the same one changes nothing. An empty path means no folder.
    void setFolder(const QString& path);
    const QString& folder() const { return m_folder; }
    /// Reads "records.json", then rescans. A missing or malformed file is an empty list before the scan.
    void load();
    /// Rewrites "records.json" whole or not at all, creating the folder if need be. Skips files in progress.
    void save();
    /// Reconciles the list with the folder and sorts it by start; the known start and duration of a file are kept.
    /// Does not save.
    void rescan();
    /// Replaces the entry of the same fileName, or appends; then saves.
    void addRecord(const RecordInfo& record);
    /// Leaves this file of the folder out of the scans until another is named: it is being written, and is added when
    /// it is closed. Empty for none.
    void setOpenFile(const QString& fileName) { m_openFile = fileName; }
    /// Removes the first entry with exactly this path, if there is one; saves in any case.
    void removeRecord(const QString& filePath);
    /// Removes every entry with one of these paths, then saves once and emits changed() once, which is faster.
    void removeRecords(const QStringList& filePaths);

    QList<RecordInfo> records() const;
    /// RecordInfo::startMs() of each of records(), in its order, without computing it anew.
    QList<qint64> startsMs() const;
    /// The recording that covers this moment (start included, end excluded), or an empty record. Only the newest
    /// recording may be of unknown length: it counts as running until now.
    RecordInfo recordAt(const QDateTime& moment) const;

    /// Whether a file of this name is a recording, by its extension.
    static bool isAudioFile(const QString& fileName);
    /// The local time written in a file name as yyyyMMdd, at most one non-digit, hhmmss; else the fallback.
    static QDateTime startFromFileName(const QString& fileName, const QDateTime& fallback);

Q_SIGNALS:
    void changed();

private:
    /// A record with its startMs().
    struct Entry {
        explicit Entry(RecordInfo info);

        RecordInfo record;
        qint64 startMs;
    };
    QString indexPath() const;
    QList<Entry> scannedFolder() const;

    QString m_folder;
    QString m_openFile;
    QList<Entry> m_entries;
};
