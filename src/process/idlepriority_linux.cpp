#include "process/idlepriority.h"

#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

void IdlePriority::forThisThread()
{
    const sched_param none = {};
    sched_setscheduler(0, SCHED_IDLE, &none);
    // The C library has no name for this call; the numbers are the kernel's (linux/ioprio.h).
    constexpr int WhoThisThread = 1;
    constexpr int ClassIdle = 3 << 13;
    syscall(SYS_ioprio_set, WhoThisThread, 0, ClassIdle);
}
