#include "web/URLSafety.h"

#include "platform/HostAddresses.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The host as the request will have it: a name in ASCII and lower case, an address without brackets.
QString hostOf(const QUrl &url) {
    QString host = url.host(QUrl::FullyEncoded).toLower();
    if (host.contains(u':'))
        host.replace(u"%25"_s, u"%"_s);
    return host;
}

bool isOfThisNetwork(const QString &host) {
    return host == u"localhost"_s || host.endsWith(u".local"_s) || host.endsWith(u".localhost"_s);
}

bool isAnyBlocked(const QList<IPAddress> &addresses) {
    return std::any_of(addresses.begin(), addresses.end(),
                       [](const IPAddress &address) { return address.isBlocked(); });
}

} // namespace

QList<IPAddress> urlSafety::resolve(const QString &host) {
    const auto found = addressesOfHost(host);
    if (!found)
        throw Blocked();
    QList<IPAddress> addresses;
    for (const QByteArray &bytes : *found)
        addresses.append(IPAddress(bytes));
    return addresses;
}

void urlSafety::check(const QUrl &url, const Resolver &resolver) {
    const QString scheme = url.scheme().toLower();
    if (scheme != u"https"_s && scheme != u"http"_s)
        throw Blocked();
    // An @ ends a user and a password, which may both be empty, and stands nowhere else.
    if (url.authority(QUrl::FullyEncoded).contains(u'@'))
        throw Blocked();
    const QString host = hostOf(url);
    if (host.isEmpty() || isOfThisNetwork(host))
        throw Blocked();
    const std::optional<IPAddress> literal = IPAddress::parse(host);
    const QList<IPAddress> addresses = literal ? QList{*literal} : resolver(host);
    if (addresses.isEmpty() || isAnyBlocked(addresses))
        throw Blocked();
}
