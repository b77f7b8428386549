#include "faults/Loopback.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void setFlags(short flags) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq loopback{};
    std::strcpy(loopback.ifr_name, "lo");
    loopback.ifr_flags = flags;
    const int failure = ::ioctl(socket, SIOCSIFFLAGS, &loopback) == 0 ? 0 : errno;
    ::close(socket);
    if (failure != 0)
        throw std::system_error(failure, std::system_category(), "the loopback");
}

} // namespace

void takeLoopbackDown() {
    setFlags(0);
}

void bringLoopbackUp() {
    setFlags(IFF_UP | IFF_RUNNING);
}
