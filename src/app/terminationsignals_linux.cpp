#include "app/terminationsignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A handler may do next to nothing; it writes a byte, and the event loop reads it.
int pipeEnds[2] = {-1, -1};

void onSignal(int)
{
    const int savedErrno = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte;
        [[maybe_unused]] const auto count = read(pipeEnds[0], &byte, 1);
        Q_EMIT terminationRequested();
    });
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction old = {};
        sigaction(number, &action, &old);
        if (old.sa_handler == SIG_IGN) // as nohup wants it
            sigaction(number, &old, nullptr);
    }
}
