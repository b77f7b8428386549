#include "support/NotificationService.h"

#include <QDBusError>

#include <stdexcept>

using namespace Qt::StringLiterals;

NotificationService::NotificationService(const QString &bus, Manner manner)
    : m_manner(manner),
      m_bus(QDBusConnection::connectToBus(bus, "notifications "_L1 + bus)) {
    if (!m_bus.registerObject(u"/org/freedesktop/Notifications"_s, this, QDBusConnection::ExportAllSlots) ||
        !m_bus.registerService(u"org.freedesktop.Notifications"_s))
        throw std::runtime_error("the service has no place on the bus");
}

// The connection ends with its bus.
NotificationService::~NotificationService() {
    m_bus.unregisterService(u"org.freedesktop.Notifications"_s);
    m_bus.unregisterObject(u"/org/freedesktop/Notifications"_s);
}

uint NotificationService::Notify(const QString &application, uint replaces, const QString &,
                                 const QString &title, const QString &body, const QStringList &,
                                 const QVariantMap &hints, int) {
    m_shown.append({application, replaces, title, body, hints});
    if (m_manner == Manner::waits)
        setDelayedReply(true);
    else if (m_manner == Manner::refuses)
        sendErrorReply(QDBusError::AccessDenied, u"not now"_s);
    return static_cast<uint>(m_shown.size());
}
