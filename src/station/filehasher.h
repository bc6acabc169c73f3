#pragma once

#include "process/worker.h"

#include <QByteArray>
#include <QObject>
#include <QString>

/// Computes the SHA-256 of closed recordings, one after the other, when the machine has nothing better to do.
class FileHasher : public QObject {
    Q_OBJECT
public:
    explicit FileHasher(QObject* parent = nullptr);

    void add(const QString& path);

Q_SIGNALS:
    /// \param sha256 in hexadecimal. Not emitted for a file that is gone or cannot be read.
    void hashed(const QString& path, qint64 bytes, const QByteArray& sha256);

private:
    Worker m_worker;
};
