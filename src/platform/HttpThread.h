#pragma once

#include "platform/Http.h"
#include "platform/Mailbox.h"

#include <QHash>
#include <QNetworkAccessManager>
#include <QThread>

class QNetworkReply;

/// The network thread behind Http.h: one access manager and the exchanges under way. It starts with
/// the first request and ends with the application object.
class HttpThread {
public:
    static HttpThread &shared();

    /// Any thread.
    quint64 start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    void abort(quint64 id);

private:
    struct Exchange {
        std::shared_ptr<HttpReceiver> receiver;
        QNetworkReply *reply = nullptr;
        bool headTold = false;
    };

    HttpThread();
    void shutDown();

    // All below: the network thread.
    void send(quint64 id, const HttpRequest &request, std::shared_ptr<HttpReceiver> receiver);
    bool tellHead(quint64 id);
    void tellBytes(quint64 id);
    void tellEnd(quint64 id);
    void drop(quint64 id);
    void useTransport(QNetworkAccessManager &manager);

    QThread m_thread;
    Mailbox *m_mailbox;
    QNetworkAccessManager *m_manager = nullptr;
    QHash<quint64, Exchange> m_exchanges;
};
