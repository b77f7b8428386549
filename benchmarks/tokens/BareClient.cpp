#include "tokens/BareClient.h"

#include <array>
#include <system_error>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void require(bool succeeded, const char *what) {
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), what);
}

class Socket {
public:
    explicit Socket(quint16 port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        require(m_socket >= 0, "socket");
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        require(::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0,
                "connect");
    }
    ~Socket() { ::close(m_socket); }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    void send(const QByteArray &bytes) const {
        require(::send(m_socket, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) ==
                    bytes.size(),
                "send");
    }

    QByteArray readToTheEnd() const {
        QByteArray all;
        std::array<char, 65536> piece{};
        while (true) {
            const ssize_t count = ::recv(m_socket, piece.data(), piece.size(), 0);
            require(count >= 0, "recv");
            if (count == 0)
                return all;
            all.append(piece.data(), count);
        }
    }

private:
    int m_socket;
};

} // namespace

QByteArray BareClient::post(const QByteArray &path, const QByteArray &key, const QByteArray &body) const {
    const Socket socket(m_port);
    socket.send("POST " + path +
                " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\nAuthorization: Bearer " + key +
                "\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size()) +
                "\r\n\r\n" + body);
    return socket.readToTheEnd();
}
