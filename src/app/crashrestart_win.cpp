#include "app/crashrestart.h"

#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <string>

#include <windows.h>

// What the handlers use is made beforehand and never freed.
namespace {

const bool* restartWanted = nullptr;
std::wstring& executable = *new std::wstring;
std::wstring& commandLine = *new std::wstring;

void onCrashSignal(int number)
{
    if (*restartWanted)
        CrashRestart::restart();
    _exit(128 + number);
}

[[noreturn]] void onTerminate()
{
    if (*restartWanted)
        CrashRestart::restart();
    _exit(1);
}

} // namespace

void CrashRestart::install(const bool& wanted)
{
    restartWanted = &wanted;
    executable = QDir::toNativeSeparators(QCoreApplication::applicationFilePath()).toStdWString();
    commandLine = L'"' + executable + L"\" " + QString::fromLatin1(RestartedArgument).toStdWString();

    // Room for the handler after a stack overflow.
    ULONG reserve = 64 * 1024;
    SetThreadStackGuarantee(&reserve);
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        std::signal(number, onCrashSignal);
    std::set_terminate(onTerminate);
}

void CrashRestart::restart()
{
    if (executable.empty())
        return;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    // CreateProcess may write into the command line, so it gets the prepared buffer itself.
    if (CreateProcessW(executable.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                       DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}
