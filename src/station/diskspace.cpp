#include "station/diskspace.h"

#include <QDir>
#include <QStorageInfo>

DiskSpace::DiskSpace(QObject* parent) : QObject(parent), m_worker(this) {}

void DiskSpace::ask(const QString& folder)
{
    if (!m_worker.isIdle() && folder == m_asked)
        return;
    m_asked = folder;
    m_worker.post([folder, reply = m_worker.reply(), this] {
        reply([this, folder, bytes = query(folder)] {
            if (folder != m_asked)
                return;
            m_freeBytes = bytes;
            Q_EMIT changed(bytes);
        });
    });
}

qint64 DiskSpace::query(const QString& folder)
{
    QDir().mkpath(folder);
    const QStorageInfo volume(folder);
    return volume.isValid() && volume.isReady() ? volume.bytesAvailable() : -1;
}
