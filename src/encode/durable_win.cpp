#include "encode/durable.h"

#include <QFileDevice>

#include <io.h>

void syncToDisk(QFileDevice& file)
{
    file.flush();
    _commit(file.handle());
}
