#include "encode/durable.h"

#include <QFileDevice>

#include <cerrno>
#include <unistd.h>

bool syncToDisk(QFileDevice& file)
{
    file.flush();
    // Some file systems of other machines know no such call, which is no loss.
    return fdatasync(file.handle()) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}
