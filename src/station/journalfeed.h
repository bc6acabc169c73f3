#pragma once

#include "station/stationstatus.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>

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
    /// \param reason "retention", "space" or "hand".
    void fileDeleted(const QString& path, const QString& reason);
    /// Writes the settings, without secrets: all of them the first time, afterwards those that have changed.
    void settingsChanged();

private:
    void onFileStarted(const QString& path);
    void onFileFinished(const RecordInfo& info);
    void onHashed(const QString& path, qint64 bytes, const QByteArray& sha256);

    Journal& m_journal;
    FileHasher* m_hasher;
    Recorder* m_recorder = nullptr;
    QJsonObject m_settings; ///< as last written
};
