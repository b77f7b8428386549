#include "faults/Loopback.h"

#include <cstring>

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
    ::ioctl(socket, SIOCSIFFLAGS, &loopback);
    ::close(socket);
}

} // namespace

void takeLoopbackDown() {
    setFlags(0);
}

void bringLoopbackUp() {
    setFlags(IFF_UP | IFF_RUNNING);
}
