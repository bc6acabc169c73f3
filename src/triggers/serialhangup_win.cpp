#include "triggers/serialhangup.h"

bool isHungUp(const QSerialPort& /*port*/)
{
    return false;
}
