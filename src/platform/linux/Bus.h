#pragma once

#include <QDBusConnection>
#include <QString>

/// The message buses of the desktop (D-Bus), for the insides of this room. Main thread. None of these
/// starts a bus, as the library would do of its own accord; connecting to one that runs takes the calling
/// thread about a millisecond, sending and asking take none of its time. One that hangs takes it three
/// seconds, once, and isn't there from then on.

/// The address of the bus of the person's session; empty if there is none.
QString sessionBusAddress();

/// Whether somebody answers at that address. Whoever connects to one that is silent waits for ever.
bool isTalkative(const QString &address);

/// The connection to the bus of the session or of the system, shared by all who ask. It isn't connected
/// where there is no such bus; one that was lost is made anew.
QDBusConnection sessionBus();
QDBusConnection systemBus();
