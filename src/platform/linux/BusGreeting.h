#pragma once

#include <QString>

/// Whether the bus at that address (D-Bus Specification, "Server Addresses") answers a greeting, for the
/// insides of this room. One that takes a connection and says nothing would hold up for ever who connects
/// through the library. Waits three seconds at most for each socket that the address names; true where it
/// can't be told, as with an address that names no socket of this machine. Any thread.
bool answersGreeting(const QString &address);
