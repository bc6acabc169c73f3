#pragma once

#include "archive/recordinfo.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QTimer>

class ArchiveIndex;

/// Deletes recordings that began longer ago than the settings allow. Knows files only through the index: what the index
/// does not list is never touched. A file that cannot be deleted is tried again an hour later.
class Housekeeper : public QObject {
    Q_OBJECT
public:
    /// The first pass runs 5 seconds later, then one per hour. \param index not owned, may be null.
    explicit Housekeeper(ArchiveIndex* index, QObject* parent = nullptr);

public Q_SLOTS:
    /// Begins a pass unless one is under way. It ends early when the settings no longer ask for it, or when the folder
    /// was changed. Each file is deleted in a turn of the event loop of its own: a year's files at once, with the
    /// index rewritten after each, would keep the thread from the audio.
    void runNow();

Q_SIGNALS:
    /// One line for a pass that deleted anything.
    void logMessage(const QString& text);
    /// This recording was too old and has been deleted.
    void deleted(const QString& filePath);

private:
    static QDateTime cutOff();
    void deleteNext();

    ArchiveIndex* m_index;
    QTimer m_timer;
    QList<RecordInfo> m_due; ///< what this pass has yet to delete
    QString m_folder; ///< the archive's folder when this pass began
    int m_deleted = 0; ///< files deleted by this pass
};
