#pragma once

#include "process/worker.h"

#include <QObject>
#include <QString>

/// What a folder's volume has for recordings.
struct RoomForRecordings {
    qint64 freeBytes = -1; ///< -1: unknown
    qint64 recordingsBytes = 0; ///< of the recordings in the folder
};

/// Asks how much room there is for recordings in any folder, on a thread of its own, for the settings dialog. Makes
/// nothing: of a folder that does not exist yet, it is that of the next one above it.
class RecordingRoom : public QObject {
    Q_OBJECT
public:
    explicit RecordingRoom(QObject* parent = nullptr);

    /// Asks for this folder; answered() follows, unless another folder is asked for first. While an answer is awaited
    /// only the last question waits: a share that hangs must not gather them.
    void ask(const QString& folder);

    /// May wait for as long as the disk does.
    static RoomForRecordings query(const QString& folder);

Q_SIGNALS:
    void answered(const RoomForRecordings& room);

private:
    void post();

    Worker m_worker;
    QString m_folder; ///< asked for last
    QString m_posted; ///< the question under way
    bool m_waiting = false; ///< for an answer
};
