#include "platform/linux/BusPlace.h"

#include "platform/linux/Bus.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QThread>
#include <QVariantMap>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr auto name = "com.quennarbel.ostrelin"_L1;
constexpr auto path = "/com/quennarbel/ostrelin"_L1;
constexpr auto interface = "org.freedesktop.Application"_L1;
constexpr auto activationTokenKey = "activation-token"_L1;
constexpr auto startupIdKey = "desktop-startup-id"_L1;

// The connection is the place's own: closing it is what gives the name up.
constexpr auto connectionName = "ostrelin's place"_L1;

constexpr unsigned long betweenTries = 20; ///< milliseconds

int millisecondsTo(const QDeadlineTimer &deadline) {
    return static_cast<int>(std::max<qint64>(deadline.remainingTime(), 1));
}

enum class Ownership { ours, anothers };

/// The answer of RequestName (D-Bus Specification, "Message Bus Messages"); nothing if the bus gives none.
std::optional<Ownership> requestName(const QDBusConnection &bus, const QDeadlineTimer &deadline) {
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    constexpr uint exists = 3;
    constexpr uint alreadyOwner = 4;
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                       u"org.freedesktop.DBus"_s, u"RequestName"_s);
    call.setArguments({QString(name), doNotQueue});
    const QDBusMessage answer = bus.call(call, QDBus::Block, millisecondsTo(deadline));
    switch (answer.arguments().value(0).toUInt()) {
    case primaryOwner:
    case alreadyOwner:
        return Ownership::ours;
    case exists:
        return Ownership::anothers;
    default:
        return std::nullopt;
    }
}

/// Whether the owner of the name has taken the request.
bool activateOwner(const QDBusConnection &bus, const StartTokens &tokens, const QDeadlineTimer &deadline) {
    QVariantMap platformData;
    if (!tokens.activationToken.isEmpty())
        platformData.insert(activationTokenKey, tokens.activationToken);
    if (!tokens.startupId.isEmpty())
        platformData.insert(startupIdKey, tokens.startupId);
    QDBusMessage call = QDBusMessage::createMethodCall(name, path, interface, u"Activate"_s);
    call.setArguments({platformData});
    // An owner that has just gone isn't started again by the bus: this process takes its place.
    call.setAutoStartService(false);
    return bus.call(call, QDBus::Block, millisecondsTo(deadline)).type() == QDBusMessage::ReplyMessage;
}

/// What others can call. Everything means the same here: that the person wants to see the program.
class Application : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit Application(BusPlace *place) : QDBusAbstractAdaptor(place), m_place(place) {}

public Q_SLOTS:
    void Activate(const QVariantMap &platformData) { activate(platformData); }
    void Open(const QStringList &, const QVariantMap &platformData) { activate(platformData); }
    void ActivateAction(const QString &, const QVariantList &, const QVariantMap &platformData) {
        activate(platformData);
    }

private:
    void activate(const QVariantMap &platformData) {
        const QString token = platformData.value(activationTokenKey).toString();
        Q_EMIT m_place->activated(token.isEmpty() ? platformData.value(startupIdKey).toString() : token);
    }

    BusPlace *m_place;
};

} // namespace

BusPlace::BusPlace() {
    new Application(this);
}

BusPlace::~BusPlace() {
    // The library ends a connection on a thread of its own, and looks at each object that is known there.
    QDBusConnection(connectionName).unregisterObject(path);
    QDBusConnection::disconnectFromBus(connectionName);
}

InstancePlace::Claim BusPlace::claim(const StartTokens &tokens, QDeadlineTimer deadline) {
    const QString address = sessionBusAddress();
    if (address.isEmpty() || !isTalkative(address))
        return Claim::nowhere;
    QDBusConnection bus = QDBusConnection::connectToBus(address, connectionName);
    // Before the name, so that nobody who sees that finds nothing behind it.
    if (!bus.isConnected() || !bus.registerObject(path, this, QDBusConnection::ExportAdaptors))
        return Claim::nowhere;
    while (true) {
        const std::optional<Ownership> ownership = requestName(bus, deadline);
        if (!ownership)
            return Claim::nowhere;
        if (ownership == Ownership::ours)
            return Claim::ours;
        if (activateOwner(bus, tokens, deadline) || deadline.hasExpired())
            return Claim::taken;
        QThread::msleep(betweenTries);
    }
}

#include "BusPlace.moc"
