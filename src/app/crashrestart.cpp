#include "app/crashrestart.h"

#include <csignal>
#include <cstdlib>
#include <exception>

namespace {

const bool* restartWanted = nullptr;

/// No destructors, no flushing: the heap may be broken.
[[noreturn]] void end(int exitCode)
{
    if (*restartWanted)
        CrashRestart::restart();
    std::_Exit(exitCode);
}

void onCrashSignal(int number)
{
    end(128 + number);
}

[[noreturn]] void onTerminate()
{
    end(1);
}

} // namespace

void CrashRestart::install(const bool& wanted)
{
    restartWanted = &wanted;
    prepare();
    for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        handle(number, onCrashSignal);
    std::set_terminate(onTerminate);
}
