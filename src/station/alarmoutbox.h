#pragma once

#include "net/webrequest.h"
#include "process/worker.h"
#include "station/alarmqueue.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <functional>

/// Sends alarms the ways that the settings ask for: by mail and to a web address. What cannot be sent is kept on disk
/// and tried for a day. At most one mail per quarter of an hour and one message per minute to the web; what comes
/// between goes into the next one.
class AlarmOutbox : public QObject {
    Q_OBJECT
public:
    enum Way { Mail, Web, WayCount };

    /// \param path of the file that keeps what waits, made when needed. \param status goes with each message to the
    /// web.
    AlarmOutbox(const QString& path, std::function<QJsonObject()> status, QObject* parent = nullptr);

    /// Waits 2 seconds at most for the disk.
    ~AlarmOutbox() override;

    void add(const Alarm& alarm);
    /// Sends what is due; to be called when something was added, and after the program has started.
    void send();

Q_SIGNALS:
    /// One line for the log: how a message went. A failure is told once, until one went out again.
    void logMessage(const QString& text);
    void failed(const QString& text);
    /// \param way "mail" or "web". \param answer the server's, or why not.
    void finished(bool sent, const QString& way, int alarms, const QString& answer);

private:
    bool isWanted(Way way) const;
    void begin(Way way);
    void mail(const QList<Alarm>& alarms);
    void post(const QList<Alarm>& alarms);
    void end(Way way, bool sent, const QString& answer);
    void load(const QString& path);
    void save();
    void plan();

    QString m_path;
    std::function<QJsonObject()> m_status;
    std::array<AlarmQueue, WayCount> m_queues;
    std::array<bool, WayCount> m_busy{};
    std::array<int, WayCount> m_inMessage{}; ///< alarms in the message under way
    std::array<bool, WayCount> m_failing{};
    WebRequest m_web;
    Worker m_disk;
    QTimer m_timer;
};
