#pragma once

#include "station/stationstatus.h"

#include "station/journalentry.h"
#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QObject>

class AlarmBoard;
class AlarmOutbox;
class ArchiveCopy;
class FileHasher;
class Housekeeper;
class Journal;
class Recorder;
class SilenceAlert;
class SpaceKeeper;
struct RecordInfo;

/// Writes into the journal what the engines report. The names of the events and of their fields are kept for ever;
/// docs/journal.md lists them.
class JournalFeed : public QObject {
    Q_OBJECT
public:
    explicit JournalFeed(Journal& journal, QObject* parent = nullptr);

    void watch(Recorder* recorder);
    void watch(Housekeeper* housekeeper);
    void watch(SpaceKeeper* keeper);
    void watch(ArchiveCopy* copy);
    void watch(SilenceAlert* alert);
    void watch(AlarmBoard* alarms);
    void watch(AlarmOutbox* outbox);

    /// From here on, what the recorder reports waits for keep() or forget(): it may be one of many attempts that fail.
    void hold() { m_holding = true; }
    void forget() { m_held.clear(); }
    /// Writes what waited, with its own times, and then at once again.
    void keep();
    /// A recording works again, after that many failures since this moment.
    void retried(int failures, const QDateTime& since);

    void programStarted();
    /// The run before this one crashed and left this report.
    void programCrashed(const QString& reportPath);
    void programEnded();
    void wishChanged(const RecordingWish& wish);
    void audioBegan();
    void audioLost();
    void audioReturned(qint64 ms);
    void clockSet(qint64 byMs);
    void overloaded();
    /// \param until invalid: not before somebody ends it.
    void paused(const QDateTime& until);
    void resumed();
    /// \param reason "retention", "space" or "hand".
    void fileDeleted(const QString& path, const QString& reason);
    /// Writes the settings, without secrets: all of them the first time, afterwards those that have changed.
    void settingsChanged();

private:
    void writeRun(const QString& event, const QJsonObject& fields);
    void onFileStarted(const QString& path);
    void onFileFinished(const RecordInfo& info);
    void onHashed(const QString& path, qint64 bytes, const QByteArray& sha256);

    Journal& m_journal;
    FileHasher* m_hasher;
    Recorder* m_recorder = nullptr;
    QJsonObject m_settings; ///< as last written
    QList<JournalEntry> m_held;
    bool m_holding = false;
};
