#include "platform/LoopbackPort.h"

#include "platform/Descriptor.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

std::optional<quint16> freeLoopbackPort() {
    const Descriptor open(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (open.number() < 0)
        return std::nullopt;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::inet_addr("127.0.0.1");
    socklen_t length = sizeof address;
    auto *const plain = reinterpret_cast<sockaddr *>(&address);
    if (::bind(open.number(), plain, length) != 0 || ::getsockname(open.number(), plain, &length) != 0)
        return std::nullopt;
    return ntohs(address.sin_port);
}
