#pragma once

#include <QByteArray>

/// The one site in the network of the tests of the window: a public address, kept for documentation
/// (RFC 5737), and its name.
inline const QByteArray siteAddress = "203.0.113.7";
inline const QByteArray siteNames = "127.0.0.1 localhost\n203.0.113.7 site.example\n";

/// The variable that says "1" in that network.
inline constexpr char ownNetworkMark[] = "OSTRELIN_TEST_NETWORK";
