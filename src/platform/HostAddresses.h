#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// The addresses of hosts, each as its bytes in network order: four of IPv4, or sixteen of IPv6. Any thread.

/// The address that `text` spells out, as inet_pton(3) reads it: IPv4 as four decimal numbers, IPv6 with no
/// brackets and no zone. Nothing for any other text.
std::optional<QByteArray> addressSpelledOut(const QString &text);

/// The addresses that the system knows for a host's name, in its order; nothing if it knows none or can't
/// tell. Blocks for as long as that takes.
std::optional<QList<QByteArray>> addressesOfHost(const QString &name);
