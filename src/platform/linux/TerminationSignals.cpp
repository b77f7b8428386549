#include "platform/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

int writingEnd = -1;

// A handler may do next to nothing; it wakes the event loop through a pipe.
void wakeEventLoop(int) {
    const int before = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writingEnd, &byte, 1);
    errno = before;
}

} // namespace

void onTerminationSignal(std::function<void()> quit) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writingEnd = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, quit = std::move(quit)] {
        notifier->setEnabled(false);
        quit();
    });
    struct sigaction action {};
    action.sa_handler = wakeEventLoop;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}
