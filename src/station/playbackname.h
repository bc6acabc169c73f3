#pragma once

#include "process/worker.h"

#include <QByteArray>
#include <QObject>
#include <QString>

/// The display name of the playback device that is recorded. The sound server is asked once per device, on a thread of
/// its own, since it may take 2 seconds.
class PlaybackName : public QObject {
    Q_OBJECT
public:
    explicit PlaybackName(QObject* parent = nullptr);

    /// Asks for this device unless it was the last one asked for. \param id empty: the default device, without a name.
    void ask(const QByteArray& id);
    /// The display name; the id until the server has answered, and when it does not know the device.
    QString name() const { return m_name; }

Q_SIGNALS:
    void changed();

private:
    Worker m_worker;
    QByteArray m_id;
    QString m_name;
};
