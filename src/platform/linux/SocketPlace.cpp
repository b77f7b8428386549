#include "platform/linux/SocketPlace.h"

#include <QFile>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto lockName = "com.quennarbel.ostrelin.lock";
constexpr auto socketName = "com.quennarbel.ostrelin.socket";

// For the person only. The sticky bit says that the file isn't to be tidied away while it lies there
// untouched (XDG Base Directory Specification, $XDG_RUNTIME_DIR).
constexpr mode_t mode = S_ISVTX | S_IRUSR | S_IWUSR;

constexpr unsigned long betweenTries = 20; ///< milliseconds
constexpr int waitingVisitors = 32;

// A visit: one packet with this word and a token, one packet with one byte as the answer.
constexpr QByteArrayView request = "activate ";
constexpr size_t longestRequest = 8192;
constexpr char answer = '.';

int openSocket() {
    return ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// The address of the socket in that open folder: however long the folder's path, this one is short.
sockaddr_un addressIn(const Descriptor &folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder.number()) + '/' + socketName;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
    return address;
}

/// Whether the holder of the place has taken the request.
bool activateHolder(const Descriptor &folder, const QString &token, const QDeadlineTimer &deadline) {
    const Descriptor socket(openSocket());
    const sockaddr_un address = addressIn(folder);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return false;
    const QByteArray packet = request.toByteArray() + token.toUtf8().left(longestRequest / 2);
    if (::send(socket.number(), packet.constData(), static_cast<size_t>(packet.size()), MSG_NOSIGNAL) < 0)
        return false;
    pollfd arrival{socket.number(), POLLIN, 0};
    char byte = 0;
    return ::poll(&arrival, 1, static_cast<int>(deadline.remainingTime())) > 0 &&
           ::recv(socket.number(), &byte, 1, 0) == 1 && byte == answer;
}

/// Another start that has knocked. It goes as soon as it has been answered.
class Visitor : public QObject {
    Q_OBJECT

public:
    Visitor(int socket, SocketPlace *place)
        : QObject(place),
          m_socket(socket),
          m_place(place),
          m_arrival(socket, QSocketNotifier::Read) {
        connect(&m_arrival, &QSocketNotifier::activated, this, &Visitor::listen);
    }

private:
    void listen() {
        std::array<char, longestRequest> buffer;
        const ssize_t size = ::recv(m_socket.number(), buffer.data(), buffer.size(), 0);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        m_arrival.setEnabled(false);
        deleteLater();
        const QByteArrayView packet(buffer.data(), std::max<ssize_t>(size, 0));
        if (!packet.startsWith(request))
            return;
        ::send(m_socket.number(), &answer, 1, MSG_NOSIGNAL);
        Q_EMIT m_place->activated(QString::fromUtf8(packet.sliced(request.size())));
    }

    Descriptor m_socket;
    SocketPlace *m_place;
    QSocketNotifier m_arrival;
};

} // namespace

SocketPlace::SocketPlace() = default;

SocketPlace::~SocketPlace() {
    if (m_socket.number() >= 0)
        ::unlinkat(m_folder.number(), socketName, 0);
}

InstancePlace::Claim SocketPlace::claim(const StartTokens &tokens, QDeadlineTimer deadline) {
    if (!openFolder())
        return Claim::nowhere;
    const QString token = tokens.activationToken.isEmpty() ? tokens.startupId : tokens.activationToken;
    while (true) {
        if (::flock(m_lock.number(), LOCK_EX | LOCK_NB) == 0) {
            listen();
            return Claim::ours;
        }
        if (errno != EWOULDBLOCK && errno != EINTR)
            return Claim::nowhere;
        if (activateHolder(m_folder, token, deadline) || deadline.hasExpired())
            return Claim::taken;
        QThread::msleep(betweenTries);
    }
}

bool SocketPlace::openFolder() {
    const QString path = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (path.isEmpty())
        return false;
    m_folder.set(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    m_lock.set(::openat(m_folder.number(), lockName, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, mode));
    return m_lock.number() >= 0 && ::fchmod(m_lock.number(), mode) == 0;
}

void SocketPlace::listen() {
    // What a killed process has left: the lock is ours, so nobody listens there.
    ::unlinkat(m_folder.number(), socketName, 0);
    m_socket.set(openSocket());
    const sockaddr_un address = addressIn(m_folder);
    // The socket's own mode becomes that of the file. Without a socket the place is held all the same.
    if (::fchmod(m_socket.number(), mode) != 0 ||
        ::bind(m_socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 ||
        ::listen(m_socket.number(), waitingVisitors) != 0)
        return;
    m_arrival = std::make_unique<QSocketNotifier>(m_socket.number(), QSocketNotifier::Read);
    connect(m_arrival.get(), &QSocketNotifier::activated, this, &SocketPlace::accept);
}

void SocketPlace::accept() {
    const int visitor = ::accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (visitor >= 0)
        new Visitor(visitor, this);
}

#include "SocketPlace.moc"
