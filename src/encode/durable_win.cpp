#include "encode/durable.h"

#include <QFileDevice>

#include <io.h>

bool syncToDisk(QFileDevice& file)
{
    file.flush();
    return _commit(file.handle()) == 0;
}
