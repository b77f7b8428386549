#include "support/ScriptedEngine.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

struct ScriptedEngine::Connection {
    QTcpSocket *socket = nullptr;
    QByteArray received;
    Script script;
    qsizetype next = 0;
};

QJsonObject ScriptedEngine::Request::json() const {
    return QJsonDocument::fromJson(body).object();
}

// A plain thread rather than Qt's, whose beginning and end the thread sanitizer can't see.
ScriptedEngine::ScriptedEngine() : m_thread([this] { run(); }) {
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
    server.listen(QHostAddress::LocalHost);
    m_mailbox = &mailbox;
    m_server = &server;
    m_port = server.serverPort();
    m_listening.set_value();
    loop.exec();
}

QUrl ScriptedEngine::url() const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port));
}

void ScriptedEngine::answer(const Script &script) {
    const std::lock_guard lock(m_lock);
    m_scripts.push_back(script);
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
        connection->script = m_scripts.empty() ? Script(404) : m_scripts.front();
        if (m_scripts.size() > 1)
            m_scripts.pop_front();
    }
    connection->next = 0;
    begin(connection);
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
    connection->socket->write("HTTP/1.1 " + QByteArray::number(connection->script.status) +
                              " Scripted\r\nContent-Type: text/event-stream\r\n"
                              "Transfer-Encoding: chunked\r\n\r\n");
    step(connection);
}

void ScriptedEngine::step(const std::shared_ptr<Connection> &connection) {
    while (connection->socket && connection->next < connection->script.steps.size()) {
        const Script::Step step = connection->script.steps.at(connection->next++);
        const QByteArray chunk = QByteArray::number(step.bytes.size(), 16) + "\r\n" + step.bytes + "\r\n";
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
        case Script::Step::Kind::repeat:
            repeat(connection, chunk);
            return;
        }
    }
    if (connection->socket)
        connection->socket->write("0\r\n\r\n");
}

void ScriptedEngine::repeat(const std::shared_ptr<Connection> &connection, const QByteArray &chunk) {
    if (!connection->socket)
        return;
    connection->socket->write(chunk);
    QTimer::singleShot(1, m_mailbox, [this, connection, chunk] { repeat(connection, chunk); });
}
