#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

/// Loaded into a program before everything else (LD_PRELOAD, ld.so(8)), it writes down each connection that
/// is opened to an internet address and each name that is looked up, before that happens: a line with the
/// process and the address or the name, into the file that CONNECTION_RECORD names. None is missed, however
/// short.

namespace {

void note(const char *what) {
    const char *path = std::getenv("CONNECTION_RECORD");
    const int record = path ? ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600) : -1;
    if (record < 0)
        return;
    ::dprintf(record, "%d %s\n", int(::getpid()), what);
    ::close(record);
}

void note(const sockaddr *address) {
    char host[INET6_ADDRSTRLEN] = "";
    char line[INET6_ADDRSTRLEN + 8] = "";
    if (address->sa_family == AF_INET) {
        const auto *ipv4 = reinterpret_cast<const sockaddr_in *>(address);
        ::inet_ntop(AF_INET, &ipv4->sin_addr, host, sizeof(host));
        std::snprintf(line, sizeof(line), "%s:%d", host, ntohs(ipv4->sin_port));
        note(line);
    } else if (address->sa_family == AF_INET6) {
        const auto *ipv6 = reinterpret_cast<const sockaddr_in6 *>(address);
        ::inet_ntop(AF_INET6, &ipv6->sin6_addr, host, sizeof(host));
        std::snprintf(line, sizeof(line), "%s:%d", host, ntohs(ipv6->sin6_port));
        note(line);
    }
}

/// What is an address already is looked up nowhere.
bool isAddress(const char *name) {
    in6_addr address{};
    return ::inet_pton(AF_INET, name, &address) == 1 || ::inet_pton(AF_INET6, name, &address) == 1;
}

} // namespace

extern "C" int connect(int descriptor, const sockaddr *address, socklen_t length) {
    static const auto system = reinterpret_cast<decltype(&::connect)>(::dlsym(RTLD_NEXT, "connect"));
    note(address);
    return system(descriptor, address, length);
}

extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **found) {
    static const auto system = reinterpret_cast<decltype(&::getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    if (name && !isAddress(name))
        note(name);
    return system(name, service, hints, found);
}
