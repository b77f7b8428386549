#pragma once

#include "web/IPAddress.h"

#include <QList>
#include <QUrl>

#include <exception>
#include <functional>

/// The gate between a model and the network: what it asks to open may lead to the public Internet, and not
/// to this machine or the networks around it. Any thread.
namespace urlSafety {

/// Raised for an address that isn't allowed. All reasons look the same.
class Blocked : public std::exception {
public:
    const char *what() const noexcept override { return "blocked"; }
};

/// Gives the addresses of a host's name, or throws Blocked. Called on the thread of the check.
using Resolver = std::function<QList<IPAddress>(const QString &host)>;

/// The addresses that the system knows for a host's name. Throws Blocked if it knows none. Blocks for as
/// long as the name servers take.
QList<IPAddress> resolve(const QString &host);

/// Throws Blocked unless the URL is one of http or https with no user or password, not even empty ones,
/// whose host is public: a literal address that isn't blocked, or a name, none of localhost, *.localhost
/// and *.local, that has addresses of which none is blocked. `resolver` is asked for names alone; what QUrl
/// reads as an IPv4 address, such as 0x7f.1 or full-width digits, is one, as it will be for the request.
///
/// The name is looked up again when the request is made, and a redirect isn't checked.
void check(const QUrl &url, const Resolver &resolver = resolve);

} // namespace urlSafety
