#pragma once

#include "process/worker.h"

#include <QObject>
#include <QString>

#include <memory>

/// Asks how much room the recordings folder has, on a thread of its own: a share that hangs must not hold the program.
class DiskSpace : public QObject {
    Q_OBJECT
public:
    explicit DiskSpace(QObject* parent = nullptr);

    /// Asks for this folder; changed() follows. Ignored while an answer for the same folder is awaited.
    void ask(const QString& folder);
    /// Free bytes as of the last answer; -1: unknown.
    qint64 freeBytes() const { return m_room.freeBytes; }
    /// Size of the volume as of the last answer; -1: unknown.
    qint64 totalBytes() const { return m_room.totalBytes; }
    /// The folder that the last answer is about.
    const QString& folder() const { return m_folder; }

    /// Free bytes of the folder's volume, -1 when that cannot be told. Makes the folder if it is missing. May wait for
    /// as long as the disk does.
    static qint64 query(const QString& folder);

Q_SIGNALS:
    /// An answer has come, even if the number is the same.
    void changed(qint64 freeBytes);

private:
    struct Room {
        qint64 freeBytes = -1;
        qint64 totalBytes = -1;
    };
    static Room measure(const QString& folder);

    std::unique_ptr<Worker> m_worker;
    bool m_waiting = false; ///< for an answer
    QString m_asked; ///< the folder of the question under way
    QString m_folder;
    Room m_room;
};
