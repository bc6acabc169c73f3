#include "triggers/serialhangup.h"

#include <QSerialPort>

#include <poll.h>

bool isHungUp(const QSerialPort& port)
{
    pollfd descriptor{port.handle(), 0, 0};
    return poll(&descriptor, 1, 0) == 1 && (descriptor.revents & POLLHUP) != 0;
}
