#pragma once

#include "net/webrequest.h"

#include <QObject>
#include <QTimer>

#include <functional>

/// Asks a web address once a minute while audio is being written, so that a monitor elsewhere notices when that stops,
/// even because the computer is dead.
class Heartbeat : public QObject {
    Q_OBJECT
public:
    /// \param beats whether audio is being written just now.
    explicit Heartbeat(std::function<bool()> beats, QObject* parent = nullptr);

    /// To be called when a recording has started or the settings have changed.
    void beat();

Q_SIGNALS:
    /// The address cannot be reached; told once, until it can be again.
    void failed(const QString& text);
    void logMessage(const QString& text);

private:
    void onFinished(const QString& error);

    std::function<bool()> m_beats;
    WebRequest m_web;
    QTimer m_timer;
    bool m_failing = false;
};
