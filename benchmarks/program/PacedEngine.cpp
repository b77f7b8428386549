#include "program/PacedEngine.h"

#include "figures/SampleReply.h"

#include <array>
#include <stdexcept>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

QByteArray httpChunk(const QByteArray &bytes) {
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

QList<QByteArray> chunksOf(const QList<QString> &tokens) {
    QList<QByteArray> chunks;
    for (const QString &token : tokens)
        chunks.append(httpChunk(eventOf(tokenPayload(token))));
    chunks.append(httpChunk(eventOf(finalPayload())) + httpChunk(eventOf("[DONE]")) + httpChunk({}));
    return chunks;
}

bool send(int connection, const QByteArray &bytes) {
    return ::send(connection, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) ==
           bytes.size();
}

/// Reads a request with its body; false if the connection ends before.
bool readRequest(int connection) {
    QByteArray request;
    std::array<char, 65536> piece{};
    while (true) {
        const ssize_t count = ::recv(connection, piece.data(), piece.size(), 0);
        if (count <= 0)
            return false;
        request.append(piece.data(), count);
        const qsizetype headEnd = request.indexOf("\r\n\r\n");
        if (headEnd < 0)
            continue;
        const QByteArray head = request.first(headEnd).toLower();
        const qsizetype field = head.indexOf("content-length:");
        const qsizetype length =
            field < 0 ? 0 : head.mid(field + 15, 12).split('\r').first().trimmed().toLongLong();
        if (request.size() >= headEnd + 4 + length)
            return true;
    }
}

} // namespace

PacedEngine::PacedEngine(const QList<QString> &tokens, std::chrono::nanoseconds interval,
                         std::chrono::nanoseconds silence, const QString &head)
    : m_chunks(chunksOf(tokens)),
      m_interval(interval),
      m_silence(silence),
      m_head(head.isEmpty() ? QByteArray() : httpChunk(eventOf(tokenPayload(head)))),
      m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *const plain = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, plain, size) != 0 || ::listen(m_listener, 8) != 0 ||
        ::getsockname(m_listener, plain, &size) != 0)
        throw std::runtime_error("the engine of the benchmark can't listen");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

PacedEngine::~PacedEngine() {
    ::shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    ::close(m_listener);
}

void PacedEngine::serve() {
    while (true) {
        const int connection = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            return;
        if (readRequest(connection))
            reply(connection);
        ::close(connection);
    }
}

void PacedEngine::reply(int connection) {
    ++m_asked;
    bool goesOn = send(connection, "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                                   "Access-Control-Allow-Origin: *\r\n"
                                   "Transfer-Encoding: chunked\r\nConnection: close\r\n\r\n" +
                                       m_head);
    std::this_thread::sleep_for(m_silence);
    ++m_begun;
    const Clock::time_point start = Clock::now();
    for (qsizetype index = 0; goesOn && index < m_chunks.size(); ++index) {
        if (m_interval.count() > 0)
            std::this_thread::sleep_until(start + index * m_interval);
        goesOn = send(connection, m_chunks.at(index));
    }
    m_duration = Clock::now() - start;
    ++m_sent;
}
