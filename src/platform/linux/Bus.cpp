#include "platform/linux/Bus.h"

#include "platform/linux/BusGreeting.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

/// The address of the socket at `path` (D-Bus Specification, "Server Addresses": bytes outside of a small
/// set are escaped).
QString addressOf(const QString &path) {
    return "unix:path="_L1 + QString::fromLatin1(QFile::encodeName(path).toPercentEncoding("/*", "~"));
}

/// "autolaunch:" is how the environment says that there is no bus yet.
QString addressInEnvironment(const char *name) {
    const QString address = qEnvironmentVariable(name);
    return address.contains("autolaunch:"_L1) ? QString() : address;
}

QDBusConnection connectionTo(const QString &address) {
    const QString name = "ostrelin "_L1 + address;
    QDBusConnection known(name);
    if (address.isEmpty() || known.isConnected())
        return known;
    QDBusConnection::disconnectFromBus(name);
    if (!isTalkative(address))
        return known;
    return QDBusConnection::connectToBus(address, name);
}

} // namespace

QString sessionBusAddress() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return addressInEnvironment("DBUS_SESSION_BUS_ADDRESS");
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString path = folder + "/bus"_L1;
    return !folder.isEmpty() && QFileInfo::exists(path) ? addressOf(path) : QString();
}

bool isTalkative(const QString &address) {
    static QSet<QString> silent;
    if (!silent.contains(address) && !answersGreeting(address))
        silent.insert(address);
    return !silent.contains(address);
}

QDBusConnection sessionBus() {
    return connectionTo(sessionBusAddress());
}

QDBusConnection systemBus() {
    // The well-known address, for where the environment names no other.
    const QString address = addressInEnvironment("DBUS_SYSTEM_BUS_ADDRESS");
    return connectionTo(address.isEmpty() ? addressOf(u"/run/dbus/system_bus_socket"_s) : address);
}
