#pragma once

#include "process/worker.h"

#include <QObject>
#include <QString>

/// Asks how much room the recordings folder has, on a thread of its own: a share that hangs must not hold the program.
class DiskSpace : public QObject {
    Q_OBJECT
public:
    explicit DiskSpace(QObject* parent = nullptr);

    /// Asks for this folder; changed() follows. Ignored while an answer for the same folder is awaited.
    void ask(const QString& folder);
    /// Free bytes as of the last answer; -1: unknown.
    qint64 freeBytes() const { return m_freeBytes; }

    /// Free bytes of the folder's volume, -1 when that cannot be told. Makes the folder if it is missing. May wait for
    /// as long as the disk does.
    static qint64 query(const QString& folder);

Q_SIGNALS:
    /// An answer has come, even if the number is the same.
    void changed(qint64 freeBytes);

private:
    Worker m_worker;
    QString m_asked; ///< the folder of the question under way
    qint64 m_freeBytes = -1;
};
