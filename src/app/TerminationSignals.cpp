#include "app/TerminationSignals.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace marrowfin::app {

namespace {
// A handler may do no more than write to a pipe; the main loop reads it.
int pipeEnds[2] = {-1, -1};

void wake(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
}

void handle(int signalNumber, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signalNumber, &action, nullptr);
}

bool isIgnored(int signalNumber) {
    struct sigaction action = {};
    return ::sigaction(signalNumber, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}
} // namespace

TerminationSignals::TerminationSignals() {
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals then end the process at once, as they do by default
    descriptor = pipeEnds[0];
    notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(descriptor, &byte, 1) == 1) {
        }
        Q_EMIT received();
    });
    handle(SIGTERM, wake);
    handle(SIGINT, wake);
    // Whoever starts us with nohup wants us to outlive the terminal.
    if (!isIgnored(SIGHUP))
        handle(SIGHUP, wake);
}

TerminationSignals::~TerminationSignals() {
    handle(SIGTERM, SIG_DFL);
    handle(SIGINT, SIG_DFL);
    if (!isIgnored(SIGHUP))
        handle(SIGHUP, SIG_DFL);
    notifier.reset();
    for (int& end : pipeEnds) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}

} // namespace marrowfin::app
