#include "app/terminationsignals.h"

#include <QPointer>

#include <windows.h>

namespace {

QPointer<TerminationSignals> instance;

/// The system calls this on a thread of its own, and ends the process some 5 seconds after a closing console.
BOOL WINAPI onConsoleEvent(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT && event != CTRL_CLOSE_EVENT)
        return FALSE;
    QMetaObject::invokeMethod(
        instance, [] { Q_EMIT instance->terminationRequested(); }, Qt::QueuedConnection);
    if (event == CTRL_CLOSE_EVENT)
        Sleep(INFINITE); // returning would end the process at once
    return TRUE;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    instance = this;
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}
