#pragma once

#include "platform/Mailbox.h"
#include "support/Script.h"

#include <QHash>
#include <QUrl>

#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

class QTcpServer;
class QTcpSocket;

/// An inference server that says what it is told: real HTTP on a real socket, on a thread of its own.
/// Requests are answered by the scripts in the order in which both came; the last script answers all
/// further ones, until there is another. Any thread.
class ScriptedEngine {
public:
    struct Request {
        QByteArray line;                       ///< such as "POST /v1/chat/completions HTTP/1.1"
        QHash<QByteArray, QByteArray> headers; ///< names in lower case
        QByteArray body;

        QJsonObject json() const;
    };

    /// Listens at one of this machine's addresses, on a free port unless told which.
    explicit ScriptedEngine(const QString &host = QStringLiteral("127.0.0.1"), quint16 port = 0);
    ~ScriptedEngine();
    ScriptedEngine(const ScriptedEngine &) = delete;
    ScriptedEngine &operator=(const ScriptedEngine &) = delete;

    /// The address, without a trailing slash.
    QUrl url() const;

    void answer(const Script &script);

    /// Leaves out the scripts that nobody has asked for yet.
    void forgetAnswers();

    /// From now on `write` writes the script for each request, on the server's thread.
    void answerEach(std::function<Script(const Request &)> write);

    /// Lets every answer that holds go on.
    void goOn();

    /// Everything that was asked so far.
    QList<Request> requests() const;

    /// How many connections are open now.
    int openConnections() const;

private:
    struct Connection;

    Script scriptFor(const Request &request); ///< under the lock
    void accept();
    void read(const std::shared_ptr<Connection> &connection);
    void begin(const std::shared_ptr<Connection> &connection);
    void step(const std::shared_ptr<Connection> &connection);
    void repeat(const std::shared_ptr<Connection> &connection, const QByteArray &chunk);

    void run();

    const QString m_host;
    Mailbox *m_mailbox = nullptr;
    QTcpServer *m_server = nullptr;
    quint16 m_port = 0;
    std::promise<void> m_listening;
    QList<std::shared_ptr<Connection>> m_holding;

    mutable std::mutex m_lock;
    std::deque<Script> m_scripts;
    std::function<Script(const Request &)> m_write;
    Script m_present{404};
    QList<Request> m_requests;
    int m_open = 0;

    std::thread m_thread;
};
