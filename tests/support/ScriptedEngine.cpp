#include "support/ScriptedEngine.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <sys/socket.h>

struct ScriptedEngine::Connection {
    QTcpSocket *socket = nullptr;
    QByteArray received;
    Script script;
    qsizetype next = 0;

    /// Bytes of the body as they go out.
    QByteArray frame(const QByteArray &bytes) const {
        if (script.body == Script::Body::plain)
            return bytes;
        return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
    }
};

namespace {

/// Closes the connection as a machine does that has lost its memory of it.
void reset(QTcpSocket &socket) {
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

} // namespace

QJsonObject ScriptedEngine::Request::json() const {
    return QJsonDocument::fromJson(body).object();
}

// A plain thread rather than Qt's, whose beginning and end the thread sanitizer can't see.
ScriptedEngine::ScriptedEngine(const QString &host, quint16 port)
    : m_host(host),
      m_port(port),
      m_thread([this] { run(); }) {
    m_listening.get_future().wait();
}

ScriptedEngine::~ScriptedEngine() {
    m_mailbox->post([] { QThread::currentThread()->quit(); });
    m_thread.join();
}

void ScriptedEngine::run() {
    QEventLoop loop;
    Mailbox mailbox;
    QTcpServer server;
    QObject::connect(&server, &QTcpServer::newConnection, &mailbox, [this] { accept(); });
    server.listen(QHostAddress(m_host), m_port);
    m_mailbox = &mailbox;
    m_server = &server;
    m_port = server.serverPort();
    m_listening.set_value();
    loop.exec();
}

QUrl ScriptedEngine::url() const {
    return QUrl(QStringLiteral("http://%1:%2").arg(m_host).arg(m_port));
}

void ScriptedEngine::answer(const Script &script) {
    const std::lock_guard lock(m_lock);
    m_scripts.push_back(script);
}

void ScriptedEngine::forgetAnswers() {
    const std::lock_guard lock(m_lock);
    m_scripts.clear();
}

void ScriptedEngine::answerEach(std::function<Script(const Request &)> write) {
    const std::lock_guard lock(m_lock);
    m_write = std::move(write);
}

void ScriptedEngine::goOn() {
    m_mailbox->post([this] {
        for (const auto &connection : std::exchange(m_holding, {}))
            step(connection);
    });
}

QList<ScriptedEngine::Request> ScriptedEngine::requests() const {
    const std::lock_guard lock(m_lock);
    return m_requests;
}

int ScriptedEngine::openConnections() const {
    const std::lock_guard lock(m_lock);
    return m_open;
}

void ScriptedEngine::accept() {
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        auto connection = std::make_shared<Connection>();
        connection->socket = socket;
        {
            const std::lock_guard lock(m_lock);
            ++m_open;
        }
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, connection] { read(connection); });
        QObject::connect(socket, &QTcpSocket::disconnected, socket, [this, connection] {
            const std::lock_guard lock(m_lock);
            --m_open;
            std::exchange(connection->socket, nullptr)->deleteLater();
        });
    }
}

void ScriptedEngine::read(const std::shared_ptr<Connection> &connection) {
    connection->received += connection->socket->readAll();
    const qsizetype headEnd = connection->received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    QList<QByteArray> lines = connection->received.first(headEnd).split('\n');
    Request request{.line = lines.takeFirst().trimmed(), .headers = {}, .body = {}};
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
    }
    const qsizetype length = request.headers.value("content-length", "0").toLongLong();
    if (connection->received.size() < headEnd + 4 + length)
        return;
    request.body = connection->received.sliced(headEnd + 4, length);
    connection->received.remove(0, headEnd + 4 + length);
    {
        const std::lock_guard lock(m_lock);
        m_requests.append(request);
        connection->script = scriptFor(request);
    }
    connection->next = 0;
    begin(connection);
}

Script ScriptedEngine::scriptFor(const Request &request) {
    if (m_write)
        return m_write(request);
    if (!m_scripts.empty()) {
        m_present = m_scripts.front();
        m_scripts.pop_front();
    }
    return m_present;
}

void ScriptedEngine::begin(const std::shared_ptr<Connection> &connection) {
    switch (connection->script.begin) {
    case Script::Begin::hangUp:
        connection->socket->abort();
        return;
    case Script::Begin::silence:
        return;
    case Script::Begin::withHead:
        break;
    }
    const Script &script = connection->script;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(script.status) + " Scripted\r\n";
    if (script.body == Script::Body::chunked)
        head += "Content-Type: text/event-stream\r\nTransfer-Encoding: chunked\r\n";
    for (const auto &[name, value] : script.headers)
        head += name + ": " + value + "\r\n";
    connection->socket->write(head + "\r\n");
    step(connection);
}

void ScriptedEngine::step(const std::shared_ptr<Connection> &connection) {
    while (connection->socket && connection->next < connection->script.steps.size()) {
        const Script::Step step = connection->script.steps.at(connection->next++);
        const QByteArray chunk = connection->frame(step.bytes);
        switch (step.kind) {
        case Script::Step::Kind::bytes:
            connection->socket->write(chunk);
            connection->socket->flush();
            break;
        case Script::Step::Kind::pause:
            QTimer::singleShot(step.milliseconds, m_mailbox, [this, connection] { this->step(connection); });
            return;
        case Script::Step::Kind::hold:
            m_holding.append(connection);
            return;
        case Script::Step::Kind::drop:
            connection->socket->flush();
            connection->socket->disconnectFromHost();
            return;
        case Script::Step::Kind::reset:
            connection->socket->flush();
            reset(*connection->socket);
            return;
        case Script::Step::Kind::repeat:
            repeat(connection, chunk);
            return;
        }
    }
    if (connection->socket && connection->script.body == Script::Body::chunked)
        connection->socket->write("0\r\n\r\n");
    else if (connection->socket)
        connection->socket->disconnectFromHost();
}

void ScriptedEngine::repeat(const std::shared_ptr<Connection> &connection, const QByteArray &chunk) {
    if (!connection->socket)
        return;
    connection->socket->write(chunk);
    QTimer::singleShot(1, m_mailbox, [this, connection, chunk] { repeat(connection, chunk); });
}
