#pragma once

#include "platform/Descriptor.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>

/// A socket that takes connections like a bus and never says a word, as a bus does that hangs.
class SilentBus {
public:
    SilentBus() {
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        const QByteArray path = QFile::encodeName(m_folder.filePath(QStringLiteral("bus")));
        if (path.size() >= qsizetype(sizeof place.sun_path))
            throw std::runtime_error("the path of the socket is too long");
        std::copy(path.begin(), path.end(), place.sun_path);
        m_socket.set(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        constexpr int waitingConnections = 8;
        if (::bind(m_socket.number(), reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0 ||
            ::listen(m_socket.number(), waitingConnections) != 0)
            throw std::runtime_error("the socket can't be opened");
    }

    QString address() const { return QLatin1String("unix:path=") + m_folder.filePath(QStringLiteral("bus")); }

private:
    QTemporaryDir m_folder;
    Descriptor m_socket;
};
