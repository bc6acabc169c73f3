#include "encode/durable.h"

#include <QFileDevice>

#include <cerrno>
#include <unistd.h>

bool syncToDisk(QFileDevice& file)
{
    file.flush();
    if (TEMP_FAILURE_RETRY(fdatasync(file.handle())) == 0)
        return true;
    // Some network file systems know no such call, which is no loss.
    return errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}
