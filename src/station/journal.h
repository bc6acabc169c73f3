#pragma once

#include "process/worker.h"
#include "station/journalentry.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <memory>

class JournalFile;
class JournalMirror;

/// The station's memory: every log line and every event, one JSON object per line, in a file per month. Lines go to the
/// local disk first and are copied into ".tidewell" of the recordings folder from there, so that a share that is away
/// costs no line. Nothing is ever deleted. A year of hourly files takes about 13 MB: 1,445 bytes were measured
/// per border between two files, times 24 x 365. Trouble comes on top.
///
/// All disk work is done on threads of its own: write() never waits.
class Journal : public QObject {
    Q_OBJECT
public:
    /// \param folder on the local disk; made with the first line.
    explicit Journal(const QString& folder, QObject* parent = nullptr);
    /// Waits 2 seconds at most until the lines are written, and 2 until they are copied.
    ~Journal() override;

    const QString& folder() const { return m_folder; }
    /// The recordings folder that the journal is copied into; empty for none. All of the journal is copied, since the
    /// recordings may be looked at anywhere later.
    void setRecordingsFolder(const QString& path);

    /// Adds a line. \param event stable name. \param text a sentence or empty. \param fields with units in their names.
    void write(const QString& event, const QString& text, const QJsonObject& fields = {});
    /// Adds a line that was made before.
    void write(const JournalEntry& entry);
    /// Asks for the newest log lines from before this moment; linesRead() follows.
    void readLinesBefore(qint64 utcMs, int atMost);
    /// Asks for the recordings that were closed lately and whose SHA-256 is missing, as after a power cut;
    /// unhashedFound() follows if there are any.
    void findUnhashed();

Q_SIGNALS:
    /// Answers readLinesBefore(), oldest line first; empty when there are no more.
    void linesRead(const QList<JournalEntry>& lines);
    /// Answers findUnhashed(). \param files names without folder.
    void unhashedFound(const QStringList& files);
    /// failed(): the local disk or the copy has a problem; recovered(): it has none any more. The text is for the log.
    void failed(const QString& text);
    void recovered(const QString& text);

private:
    void mirror();
    void onWritten(bool ok);
    void onMirrored(bool ok);

    QString m_folder;
    QString m_target; ///< folder of the copy; empty: none
    std::shared_ptr<JournalFile> m_file; ///< used by the writer's thread only
    std::shared_ptr<JournalMirror> m_copy; ///< used by the mirrorer's thread only; null: no folder to copy into
    Worker m_writer;
    Worker m_mirrorer;
    QTimer m_retry;
    int m_lost = 0; ///< lines for which even the queue had no room
    bool m_writeFailing = false;
    int m_mirrorFailures = 0; ///< failed copies in a row
    bool m_mirrorDue = false; ///< something was written since the copy under way began
};
