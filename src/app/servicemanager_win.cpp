#include "app/servicemanager.h"

bool ServiceManager::restartsUs()
{
    return false;
}

ServiceManager::Reporter::Reporter(QObject* parent) : QObject(parent) {}

void ServiceManager::Reporter::ready() {}

void ServiceManager::Reporter::stopping() {}
