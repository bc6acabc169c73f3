#pragma once

#include "capture/devicelist.h"
#include "triggers/serialtrigger.h"

#include <QCoreApplication>
#include <QStringList>

/// What this machine has to record from and to be triggered by, as text for a terminal: below each device stand the
/// settings that choose it, ready to be copied.
class DeviceListing {
    Q_DECLARE_TR_FUNCTIONS(DeviceListing)

public:
    /// Ends with a line break. Values are percent-encoded, as an identifier may hold any byte. Names are the devices'
    /// own, shortened to 200 characters and without those that would move the cursor or break the line.
    static QString text(const DeviceList& devices, const QList<SerialTrigger::Port>& serialPorts,
                        const QStringList& midiInputs);
    /// The text for this machine at this moment, within 3 seconds or so. Needs a QCoreApplication, and no display.
    static QString current();
};
