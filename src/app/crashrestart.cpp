#include "app/crashrestart.h"

#include "app/crashreport.h"

#include <csignal>
#include <cstdlib>
#include <exception>

namespace {

const bool* restartWanted = nullptr;

/// No destructors, no flushing: the heap may be broken.
[[noreturn]] void end(int exitCode, int signalNumber)
{
    CrashReport::write(signalNumber);
    if (*restartWanted)
        CrashRestart::restart();
    std::_Exit(exitCode);
}

void onCrashSignal(int number)
{
    end(128 + number, number);
}

[[noreturn]] void onTerminate()
{
    end(1, 0);
}

} // namespace

void CrashRestart::install(const bool& wanted, const QStringList& arguments)
{
    restartWanted = &wanted;
    prepare(arguments + QStringList{QString::fromLatin1(RestartedArgument)});
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        handle(number, onCrashSignal);
    std::set_terminate(onTerminate);
}
