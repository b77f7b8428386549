#include "platform/HostAddresses.h"

#include <memory>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace {

/// The text for a call that would take a NUL for its end; nothing if there is one.
std::optional<QByteArray> systemText(const QString &text) {
    const QByteArray bytes = text.toUtf8();
    return bytes.contains('\0') ? std::nullopt : std::optional(bytes);
}

template<typename Address>
QByteArray bytesOf(const Address &address) {
    return {reinterpret_cast<const char *>(&address), sizeof address};
}

template<typename Address>
std::optional<QByteArray> spelledOut(int family, const QByteArray &text) {
    Address address;
    return ::inet_pton(family, text.constData(), &address) == 1 ? std::optional(bytesOf(address))
                                                                : std::nullopt;
}

QByteArray addressIn(const addrinfo &entry) {
    if (entry.ai_addr && entry.ai_family == AF_INET)
        return bytesOf(reinterpret_cast<const sockaddr_in *>(entry.ai_addr)->sin_addr);
    if (entry.ai_addr && entry.ai_family == AF_INET6)
        return bytesOf(reinterpret_cast<const sockaddr_in6 *>(entry.ai_addr)->sin6_addr);
    return {};
}

} // namespace

std::optional<QByteArray> addressSpelledOut(const QString &text) {
    const auto bytes = systemText(text);
    if (!bytes)
        return std::nullopt;
    return text.contains(u':') ? spelledOut<in6_addr>(AF_INET6, *bytes)
                               : spelledOut<in_addr>(AF_INET, *bytes);
}

std::optional<QList<QByteArray>> addressesOfHost(const QString &name) {
    const auto bytes = systemText(name);
    const addrinfo wanted{.ai_family = AF_UNSPEC, .ai_socktype = SOCK_STREAM};
    addrinfo *found = nullptr;
    if (!bytes || ::getaddrinfo(bytes->constData(), nullptr, &wanted, &found) != 0 || !found)
        return std::nullopt;
    const std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
    QList<QByteArray> addresses;
    for (const addrinfo *entry = found; entry; entry = entry->ai_next) {
        const QByteArray address = addressIn(*entry);
        if (!address.isEmpty())
            addresses.append(address);
    }
    return addresses;
}
