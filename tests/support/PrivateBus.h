#pragma once

#include "platform/ChildProcess.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A message bus of its own, with nobody on it: the reference daemon in a folder that goes with this object.
/// To be put into DBUS_SESSION_BUS_ADDRESS or DBUS_SYSTEM_BUS_ADDRESS.
class PrivateBus {
public:
    /// Starts the bus, and returns once it takes connections. Throws std::runtime_error.
    PrivateBus();

    QString address() const { return m_address; }

    /// Kills the bus, as a crash would.
    void die();

    /// Starts it again at the same address.
    void start();

private:
    QTemporaryDir m_folder;
    QString m_address;
    std::unique_ptr<ChildProcess> m_daemon;
};
