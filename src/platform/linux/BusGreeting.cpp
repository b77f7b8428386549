#include "platform/linux/BusGreeting.h"

#include "platform/Descriptor.h"

#include <QByteArray>
#include <QList>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr timeval patience{.tv_sec = 3, .tv_usec = 0};

struct SocketAddress {
    sockaddr_un address{};
    socklen_t length = 0;
};

/// The socket that one entry of an address names; nothing if it is another kind of place.
std::optional<SocketAddress> socketOf(const QByteArray &entry) {
    constexpr QByteArrayView transport = "unix:";
    if (!entry.startsWith(transport))
        return std::nullopt;
    for (const QByteArray &pair : entry.sliced(transport.size()).split(',')) {
        const QByteArray key = pair.left(pair.indexOf('='));
        const bool isAbstract = key == "abstract";
        QByteArray name = QByteArray::fromPercentEncoding(pair.mid(key.size() + 1));
        if (isAbstract)
            name.prepend('\0');
        SocketAddress socket;
        if ((!isAbstract && key != "path") || name.size() >= qsizetype(sizeof socket.address.sun_path))
            continue;
        socket.address.sun_family = AF_UNIX;
        std::memcpy(socket.address.sun_path, name.constData(), size_t(name.size()));
        socket.length =
            socklen_t(offsetof(sockaddr_un, sun_path) + size_t(name.size()) + (isAbstract ? 0 : 1));
        return socket;
    }
    return std::nullopt;
}

enum class Answer { came, failedToCome, noSocket };

/// What comes of the first words of a connection (D-Bus Specification, "Authentication Protocol").
Answer greet(const SocketAddress &place) {
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    for (const int wait : {SO_SNDTIMEO, SO_RCVTIMEO})
        ::setsockopt(socket.number(), SOL_SOCKET, wait, &patience, sizeof patience);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr *>(&place.address), place.length) != 0)
        return errno == EAGAIN ? Answer::failedToCome : Answer::noSocket;
    const QByteArray words =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::getuid()).toHex() + "\r\n";
    char byte = 0;
    const bool isAnswered =
        ::send(socket.number(), words.constData(), size_t(words.size()), MSG_NOSIGNAL) == words.size() &&
        ::recv(socket.number(), &byte, 1, 0) >= 0;
    return isAnswered ? Answer::came : Answer::failedToCome;
}

} // namespace

bool answersGreeting(const QString &address) {
    for (const QByteArray &entry : address.toUtf8().split(';')) {
        const std::optional<SocketAddress> place = socketOf(entry);
        const Answer answer = place ? greet(*place) : Answer::came;
        if (answer != Answer::noSocket)
            return answer == Answer::came;
    }
    return true;
}
