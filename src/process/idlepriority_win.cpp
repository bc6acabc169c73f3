#include "process/idlepriority.h"

#include <windows.h>

void IdlePriority::forThisThread()
{
    SetThreadPriority(GetCurrentThread(), THREAD_MODE_BACKGROUND_BEGIN);
}
