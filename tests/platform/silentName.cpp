// Asks for a page of a host whose name server takes every question and answers none, with a fifth of a
// second of patience, and prints how that ended. Ends itself if it is held up. Belongs in a network of its
// own, whose resolver asks 127.0.0.1.

#include "platform/Http.h"

#include <QTimer>

#include <cstdio>

#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Far longer than the patience, and less than a resolver waits for one question.
constexpr unsigned secondsToLive = 4;

/// A socket that is asked, and never read. False if this isn't a network of one's own.
bool listenSilently() {
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq loopback{.ifr_ifrn = {"lo"}, .ifr_ifru = {}};
    loopback.ifr_flags = IFF_UP | IFF_RUNNING;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(53);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return ::ioctl(socket, SIOCSIFFLAGS, &loopback) == 0 &&
           ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
}

Task<> ask() {
    HttpRequest request;
    request.url = QUrl(u"http://models.example/"_s);
    request.wholeTimeout = std::chrono::milliseconds(200);
    try {
        co_await fetch(request, {});
        std::puts("answered");
    } catch (const HttpError &error) {
        std::puts(error.what());
    }
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (!listenSilently())
        return 1;
    std::puts("listening");
    std::fflush(stdout);
    ::alarm(secondsToLive);
    const Task<> task = ask();
    return QCoreApplication::exec();
}
