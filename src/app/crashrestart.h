#pragma once

#include <QString>
#include <QStringList>

/// Starts the program anew after it has crashed.
namespace CrashRestart {
/// Passed to the new process, to mark it: one that crashes again and again is made to wait.
inline constexpr char RestartedArgument[] = "--restarted";

/// Arms the handlers for SIGSEGV, SIGABRT, SIGFPE, SIGILL and for uncaught exceptions. On a crash they write the crash
/// report, call restart() if `wanted` is true at that moment, and end the process at once: with 128 + the signal's
/// number, or with 1 after an exception. Call once, on the main thread.
/// \param wanted lives as long as the process. \param arguments what the new process gets before RestartedArgument.
void install(const bool& wanted, const QStringList& arguments = {});

/// Starts a detached copy of the running executable. Works with a broken heap and a full stack: everything it needs was
/// prepared by install(), and only then does it do anything.
void restart();

/// The platform's part of install(): makes what restart() uses, and room for a handler after a stack overflow. On Linux
/// it also has this process and the new one ignore SIGPIPE.
void prepare(const QStringList& arguments);
/// The platform's part of install(): has `handler` called when the process gets this signal.
void handle(int signalNumber, void (*handler)(int));
} // namespace CrashRestart
