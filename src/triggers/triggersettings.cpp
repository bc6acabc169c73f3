#include "triggers/triggersettings.h"

#include "settings/appsettings.h"

TriggerSettings TriggerSettings::current()
{
    TriggerSettings settings;
    for (const auto& [key, value] : AppSettings::instance().values()) {
        if (key.startsWith(QLatin1String("trigger/")) && key != QLatin1String("trigger/holdSeconds"))
            settings.values.insert(key, value);
    }
    return settings;
}
