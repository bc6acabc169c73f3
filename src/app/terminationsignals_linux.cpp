#include "app/terminationsignals.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A handler may do next to nothing; it writes a byte, and the event loop reads it.
int pipeEnds[2] = {-1, -1};

void onSignal(int number)
{
    const int savedErrno = errno;
    const char byte = char(number);
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
        // All at once: a hundred requests for the settings are one, and an end goes before them.
        char numbers[512];
        const auto count = std::max<ssize_t>(0, read(pipeEnds[0], numbers, sizeof numbers));
        const bool end = std::any_of(numbers, numbers + count, [](char number) { return number != SIGHUP; });
        if (end)
            Q_EMIT terminationRequested();
        else if (count > 0)
            Q_EMIT hangUp();
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
