#include "support/FileManagerService.h"

#include <QDBusError>

#include <stdexcept>

using namespace Qt::StringLiterals;

FileManagerService::FileManagerService(const QString &bus, Manner manner)
    : m_manner(manner),
      m_bus(QDBusConnection::connectToBus(bus, "files "_L1 + bus)) {
    if (!m_bus.registerObject(u"/org/freedesktop/FileManager1"_s, this, QDBusConnection::ExportAllSlots) ||
        !m_bus.registerService(u"org.freedesktop.FileManager1"_s))
        throw std::runtime_error("the service has no place on the bus");
}

// The connection ends with its bus.
FileManagerService::~FileManagerService() {
    m_bus.unregisterService(u"org.freedesktop.FileManager1"_s);
    m_bus.unregisterObject(u"/org/freedesktop/FileManager1"_s);
}

void FileManagerService::ShowItems(const QStringList &addresses, const QString &) {
    m_shown.append(addresses);
    if (m_manner == Manner::fails)
        sendErrorReply(QDBusError::Failed, u"no window"_s);
}
