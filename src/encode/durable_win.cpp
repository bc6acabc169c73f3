#include "encode/durable.h"

#include <QFileDevice>

#include <io.h>
#include <windows.h>

bool syncToDisk(QFileDevice& file)
{
    file.flush();
    if (_commit(file.handle()) == 0)
        return true;
    // Some network file systems know no such call, which is no loss.
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
}
