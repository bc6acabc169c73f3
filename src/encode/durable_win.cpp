#include "encode/durable.h"

#include <QFileDevice>

#include <io.h>
#include <windows.h>

bool syncToDisk(QFileDevice& file)
{
    file.flush();
    if (FlushFileBuffers(HANDLE(_get_osfhandle(file.handle()))))
        return true;
    // Some network file systems know no such call, which is no loss.
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
}
