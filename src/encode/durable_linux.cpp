#include "encode/durable.h"

#include <QFileDevice>

#include <unistd.h>

void syncToDisk(QFileDevice& file)
{
    file.flush();
    fdatasync(file.handle());
}
