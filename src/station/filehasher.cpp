#include "station/filehasher.h"

#include <QCryptographicHash>
#include <QFile>

FileHasher::FileHasher(QObject* parent) : QObject(parent), m_worker(this, Worker::Priority::Idle) {}

void FileHasher::add(const QString& path)
{
    m_worker.post([path, reply = m_worker.reply(), this] {
        QFile file(path);
        QCryptographicHash hash(QCryptographicHash::Sha256);
        if (file.open(QIODevice::ReadOnly) && hash.addData(&file))
            reply([this, path, bytes = file.size(), sha256 = hash.result().toHex()] {
                Q_EMIT hashed(path, bytes, sha256);
            });
    });
}
