#pragma once

class QSerialPort;

/// Whether the device behind an open port is gone for good: an adapter that was unplugged, or the other end of a
/// pseudo-terminal. Needed where Qt does not report it: reading nothing from such a port, without an error, Qt 6.8 on
/// Linux tries again without end. Always false on Windows, where Qt reports it.
bool isHungUp(const QSerialPort& port);
