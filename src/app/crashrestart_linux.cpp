#include "app/crashrestart.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <unistd.h>

// What the handlers use is made beforehand and never freed; they call async-signal-safe functions only.
namespace {

char** restartArguments = nullptr; ///< ends with null, as execv() wants it

// A stack overflow leaves no room for a handler on the normal stack.
alignas(16) char handlerStack[64 * 1024];

/// The new process must not inherit the crashed one's files, sockets and blocked signals.
[[noreturn]] void becomeNewProcess()
{
    setsid();
    // Twice forked, it belongs to init: nobody waits for it, and it outlives the terminal and the crashed parent.
    if (_Fork() != 0)
        _exit(0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    close_range(3, ~0U, 0);
    execv(restartArguments[0], restartArguments);
    _exit(127);
}

} // namespace

void CrashRestart::prepare(const QStringList& arguments)
{
    restartArguments = new char*[size_t(arguments.size()) + 2]();
    restartArguments[0] = qstrdup(QFile::encodeName(QCoreApplication::applicationFilePath()));
    for (qsizetype i = 0; i < arguments.size(); ++i)
        restartArguments[i + 1] = qstrdup(QFile::encodeName(arguments.at(i)));

    // Who reads our messages may go at any time. Neither this process nor the next, which inherits this, shall die of
    // it.
    std::signal(SIGPIPE, SIG_IGN);

    stack_t stack = {};
    stack.ss_sp = handlerStack;
    stack.ss_size = sizeof handlerStack;
    sigaltstack(&stack, nullptr);
}

void CrashRestart::handle(int signalNumber, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_ONSTACK;
    // One crash is enough: a second signal must not interrupt the handler of the first.
    sigfillset(&action.sa_mask);
    sigaction(signalNumber, &action, nullptr);
}

void CrashRestart::restart()
{
    if (restartArguments && _Fork() == 0)
        becomeNewProcess();
}
