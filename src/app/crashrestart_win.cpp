#include "app/crashrestart.h"

#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <string>

#include <windows.h>

// What the handlers use is made beforehand and never freed.
namespace {

std::wstring& executable = *new std::wstring;
std::wstring& commandLine = *new std::wstring;

} // namespace

void CrashRestart::prepare(const QStringList& arguments)
{
    executable = QDir::toNativeSeparators(QCoreApplication::applicationFilePath()).toStdWString();
    commandLine = L'"' + executable + L"\" " + arguments.join(u' ').toStdWString(); // none of them needs quotes

    ULONG reserve = 64 * 1024;
    SetThreadStackGuarantee(&reserve);
}

void CrashRestart::handle(int signalNumber, void (*handler)(int))
{
    std::signal(signalNumber, handler);
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
