#include "process/childlifetime.h"

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

void ChildLifetime::endWithThisProgram(QProcess& child)
{
    // Runs between fork and exec, where only system calls are safe.
    child.setChildProcessModifier([parent = getpid()] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) // it has ended in the meantime
            _exit(1);
    });
}
