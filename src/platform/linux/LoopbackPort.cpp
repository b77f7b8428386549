#include "platform/LoopbackPort.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

std::optional<quint16> freeLoopbackPort() {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return std::nullopt;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::inet_addr("127.0.0.1");
    socklen_t length = sizeof address;
    auto *const plain = reinterpret_cast<sockaddr *>(&address);
    const bool bound = ::bind(descriptor, plain, length) == 0 && ::getsockname(descriptor, plain, &length) == 0;
    ::close(descriptor);
    if (!bound)
        return std::nullopt;
    return ntohs(address.sin_port);
}
