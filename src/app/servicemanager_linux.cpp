#include "app/servicemanager.h"

#include <chrono>

#include <systemd/sd-daemon.h>

bool ServiceManager::restartsUs()
{
    return qEnvironmentVariableIsSet("NOTIFY_SOCKET");
}

ServiceManager::Reporter::Reporter(QObject* parent) : QObject(parent)
{
    connect(&m_watchdog, &QTimer::timeout, this, [] { sd_notify(0, "WATCHDOG=1"); });
}

void ServiceManager::Reporter::ready()
{
    sd_notify(0, "READY=1");
    uint64_t microseconds = 0;
    if (sd_watchdog_enabled(0, &microseconds) > 0) // half of the limit, as its manual advises
        m_watchdog.start(std::chrono::milliseconds(qint64(microseconds / 2000)));
}

void ServiceManager::Reporter::stopping()
{
    sd_notify(0, "STOPPING=1");
}
