#include "platform/NetworkState.h"

#include <memory>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

namespace {

/// What an interface gives itself, also where nobody answers.
bool isLinkLocal(const sockaddr &address) {
    if (address.sa_family == AF_INET6)
        return IN6_IS_ADDR_LINKLOCAL(&reinterpret_cast<const sockaddr_in6 &>(address).sin6_addr);
    constexpr in_addr_t network = 0xA9FE0000; // 169.254.0.0/16, RFC 3927
    constexpr in_addr_t mask = 0xFFFF0000;
    return (ntohl(reinterpret_cast<const sockaddr_in &>(address).sin_addr.s_addr) & mask) == network;
}

bool leadsOut(const ifaddrs &entry) {
    constexpr unsigned int wanted = IFF_UP | IFF_RUNNING;
    if ((entry.ifa_flags & wanted) != wanted || (entry.ifa_flags & IFF_LOOPBACK) != 0 || !entry.ifa_addr)
        return false;
    const int family = entry.ifa_addr->sa_family;
    return (family == AF_INET || family == AF_INET6) && !isLinkLocal(*entry.ifa_addr);
}

} // namespace

bool hasNetwork() {
    ifaddrs *first = nullptr;
    if (::getifaddrs(&first) != 0)
        return true;
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> entries(first, ::freeifaddrs);
    for (const ifaddrs *entry = first; entry; entry = entry->ifa_next) {
        if (leadsOut(*entry))
            return true;
    }
    return false;
}
