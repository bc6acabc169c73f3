#include "station/heartbeat.h"

#include "settings/appsettings.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

Heartbeat::Heartbeat(std::function<bool()> beats, QObject* parent) : QObject(parent), m_beats(std::move(beats))
{
    m_timer.setInterval(1min);
    connect(&m_timer, &QTimer::timeout, this, &Heartbeat::beat);
    connect(&m_web, &WebRequest::finished, this, &Heartbeat::onFinished);
}

void Heartbeat::beat()
{
    const QString& url = AppSettings::instance().heartbeatUrl;
    if (url.isEmpty()) {
        m_timer.stop();
        return;
    }
    m_timer.start();
    if (m_beats())
        m_web.get(url);
}

void Heartbeat::onFinished(const QString& error)
{
    const bool failing = !error.isEmpty();
    if (std::exchange(m_failing, failing) == failing)
        return;
    if (failing)
        Q_EMIT failed(tr("The address of the heartbeat cannot be reached: %1").arg(error));
    else
        Q_EMIT logMessage(tr("The address of the heartbeat is reached again"));
}
