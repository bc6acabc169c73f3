#include "station/diskspace.h"

#include <QDir>
#include <QStorageInfo>

DiskSpace::DiskSpace(QObject* parent) : QObject(parent), m_worker(std::make_unique<Worker>(this)) {}

void DiskSpace::ask(const QString& folder)
{
    if (m_waiting && folder == m_asked)
        return;
    if (m_waiting) // the folder that was asked before may hang, and must not hold the question for this one
        m_worker = std::make_unique<Worker>(this);
    m_asked = folder;
    m_waiting = true;
    m_worker->post([folder, reply = m_worker->reply(), this] {
        reply([this, folder, room = measure(folder)] {
            if (folder != m_asked)
                return;
            m_waiting = false;
            m_folder = folder;
            m_room = room;
            Q_EMIT changed(room.freeBytes);
        });
    });
}

DiskSpace::Room DiskSpace::measure(const QString& folder)
{
    QDir().mkpath(folder);
    const QStorageInfo volume(folder);
    return volume.isValid() && volume.isReady() ? Room{volume.bytesAvailable(), volume.bytesTotal()} : Room();
}

qint64 DiskSpace::query(const QString& folder)
{
    return measure(folder).freeBytes;
}
