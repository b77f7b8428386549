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
/// is opened to an internet address, each message that goes to one without a connection, and each name that
/// is looked up, before that happens: a line with the process and the address or the name, into the file that
/// CONNECTION_RECORD names. None is missed, however short.

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
    if (!address)
        return;
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

/// The function of that name in the system's library.
template<typename Function>
Function *systems(Function *, const char *name) {
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" int connect(int descriptor, const sockaddr *address, socklen_t length) {
    static const auto system = systems(&::connect, "connect");
    note(address);
    return system(descriptor, address, length);
}

extern "C" ssize_t sendto(int descriptor, const void *bytes, size_t count, int flags, const sockaddr *address,
                          socklen_t length) {
    static const auto system = systems(&::sendto, "sendto");
    note(address);
    return system(descriptor, bytes, count, flags, address, length);
}

extern "C" ssize_t sendmsg(int descriptor, const msghdr *message, int flags) {
    static const auto system = systems(&::sendmsg, "sendmsg");
    note(static_cast<const sockaddr *>(message->msg_name));
    return system(descriptor, message, flags);
}

extern "C" int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **found) {
    static const auto system = systems(&::getaddrinfo, "getaddrinfo");
    if (name && !isAddress(name))
        note(name);
    return system(name, service, hints, found);
}
