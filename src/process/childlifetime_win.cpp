#include "process/childlifetime.h"

#include <QLoggingCategory>
#include <QProcess>

#include <windows.h>

Q_LOGGING_CATEGORY(lcChild, "tidewell.process.child")

namespace {

/// A job whose processes end when its last handle is closed, which the system does for a program that has ended.
HANDLE jobOfThisProgram()
{
    static const HANDLE job = [] {
        const HANDLE handle = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        if (handle && !SetInformationJobObject(handle, JobObjectExtendedLimitInformation, &limits, sizeof limits))
            qCWarning(lcChild, "the job object takes no limits (error %lu)", GetLastError());
        return handle;
    }();
    return job;
}

void assignToJob(qint64 processId)
{
    const HANDLE process = OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, DWORD(processId));
    if (!process || !AssignProcessToJobObject(jobOfThisProgram(), process))
        qCWarning(lcChild, "the decoder will outlive a crash (error %lu)", GetLastError());
    if (process)
        CloseHandle(process);
}

} // namespace

void ChildLifetime::endWithThisProgram(QProcess& child)
{
    QObject::connect(&child, &QProcess::started, &child, [&child] { assignToJob(child.processId()); });
}
