#include "station/playbackname.h"

#include "capture/loopback.h"

#include <algorithm>

PlaybackName::PlaybackName(QObject* parent) : QObject(parent), m_worker(this) {}

void PlaybackName::ask(const QByteArray& id)
{
    if (id == m_id)
        return;
    m_id = id;
    m_name = QString::fromUtf8(id);
    if (id.isEmpty())
        return;
    m_worker.post([id, reply = m_worker.reply(), this] {
        const QList<PlaybackDevice> devices = playbackDevices();
        const auto found = std::find_if(devices.cbegin(), devices.cend(),
                                        [&](const PlaybackDevice& device) { return device.id == id; });
        if (found == devices.cend())
            return;
        reply([this, id, name = found->name] {
            if (id != m_id)
                return;
            m_name = name;
            Q_EMIT changed();
        });
    });
}
