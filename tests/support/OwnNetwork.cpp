#include "support/OwnNetwork.h"

#include <QFile>
#include <QTemporaryFile>

#include <cstring>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

bool write(const char *path, const QByteArray &text) {
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// Leaves the network and the mounts of the others (namespaces(7)). Whoever isn't root becomes it, in a
/// world of its own.
bool leaveOthers() {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0)
        return ::unshare(CLONE_NEWNET | CLONE_NEWNS) == 0;
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNET | CLONE_NEWNS) == 0 &&
           write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1") &&
           write("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
}

ifreq interfaceOf(const QByteArray &name) {
    ifreq interface {};
    qstrncpy(interface.ifr_name, name.constData(), sizeof interface.ifr_name);
    return interface;
}

bool addAddress(int socket, const QByteArray &alias, const QByteArray &address) {
    ifreq interface = interfaceOf(alias);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    if (::inet_pton(AF_INET, address.constData(), &place.sin_addr) != 1)
        return false;
    std::memcpy(&interface.ifr_addr, &place, sizeof place);
    return ::ioctl(socket, SIOCSIFADDR, &interface) == 0;
}

bool makeInterfaces(const QList<QByteArray> &addresses) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq loopback = interfaceOf("lo");
    loopback.ifr_flags = IFF_UP | IFF_RUNNING;
    bool isMade = ::ioctl(socket, SIOCSIFFLAGS, &loopback) == 0;
    for (qsizetype place = 0; isMade && place < addresses.size(); ++place)
        isMade = addAddress(socket, "lo:" + QByteArray::number(place + 1), addresses.at(place));
    ::close(socket);
    return isMade;
}

bool useNames(const QByteArray &names) {
    QTemporaryFile hosts;
    if (!hosts.open() || hosts.write(names) != names.size() || !hosts.flush())
        return false;
    // The file may go once it is mounted.
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount(hosts.fileName().toLocal8Bit().constData(), "/etc/hosts", nullptr, MS_BIND, nullptr) == 0;
}

} // namespace

bool enterOwnNetwork(const QList<QByteArray> &addresses, const QByteArray &names) {
    for (const char *proxy : {"http_proxy", "https_proxy", "all_proxy", "ALL_PROXY"})
        qunsetenv(proxy);
    return leaveOthers() && makeInterfaces(addresses) && useNames(names);
}
