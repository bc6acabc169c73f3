#include "station/recordingroom.h"

#include "archive/archiveindex.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStorageInfo>

RecordingRoom::RecordingRoom(QObject* parent) : QObject(parent), m_worker(this) {}

void RecordingRoom::ask(const QString& folder)
{
    m_folder = folder;
    if (!m_waiting)
        post();
}

void RecordingRoom::post()
{
    m_waiting = true;
    m_posted = m_folder;
    m_worker.post([this, folder = m_folder, reply = m_worker.reply()] {
        reply([this, room = query(folder)] {
            m_waiting = false;
            if (m_posted == m_folder)
                Q_EMIT answered(room);
            else
                post();
        });
    });
}

RoomForRecordings RecordingRoom::query(const QString& folder)
{
    RoomForRecordings room;
    if (!QDir::isAbsolutePath(folder))
        return room;
    QString existing = QDir::cleanPath(folder);
    while (!QFileInfo(existing).isDir() && !QDir(existing).isRoot())
        existing = QFileInfo(existing).path();
    const QStorageInfo volume(existing);
    if (volume.isValid() && volume.isReady())
        room.freeBytes = volume.bytesAvailable();
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext()) {
        files.next();
        if (ArchiveIndex::isAudioFile(files.fileName()))
            room.recordingsBytes += files.fileInfo().size();
    }
    return room;
}
