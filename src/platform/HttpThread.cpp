#include "platform/HttpThread.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QIODevice>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <atomic>
#include <cstring>

namespace {

class NoCookies : public QNetworkCookieJar {
public:
    QList<QNetworkCookie> cookiesForUrl(const QUrl &) const override { return {}; }
    bool setCookiesFromUrl(const QList<QNetworkCookie> &, const QUrl &) override { return false; }
};

/// The system's proxies, but none on the way to this machine itself.
class ProxyChoice : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override {
        const QString host = query.peerHostName();
        if (QHostAddress(host).isLoopback() || host == QLatin1String("localhost"))
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        return systemProxyForQuery(query);
    }
};

/// A body that can be read once. When a server hangs up, even in the middle of its answer, the access
/// manager sends the request again by itself, but only if it can wind the body back; here it can't.
class OnceReadable : public QIODevice {
public:
    OnceReadable(QByteArray bytes, QObject *parent) : QIODevice(parent), m_bytes(std::move(bytes)) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_read; }
    bool atEnd() const override { return bytesAvailable() == 0; }
    bool seek(qint64) override { return false; }

protected:
    qint64 readData(char *target, qint64 most) override {
        if (bytesAvailable() == 0)
            return -1;
        const qint64 count = std::min(most, bytesAvailable());
        std::memcpy(target, m_bytes.constData() + m_read, static_cast<size_t>(count));
        m_read += count;
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_read = 0;
};

/// True for errors that only repeat what the status of a received answer says. ContentReSendError
/// stands among them, but tells of a connection that was lost: see OnceReadable.
bool isMerelyStatus(QNetworkReply::NetworkError error) {
    if (error == QNetworkReply::ContentReSendError)
        return false;
    return (error > QNetworkReply::UnknownProxyError && error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

std::string describe(QNetworkReply::NetworkError error, const QNetworkReply &reply) {
    // Nobody here aborts a reply that is still listened to, so a cancelled one has run out of time.
    if (error == QNetworkReply::OperationCanceledError)
        return "The request timed out.";
    if (error == QNetworkReply::ContentReSendError)
        return "The network connection was lost.";
    return reply.errorString().toStdString();
}

} // namespace

HttpThread &HttpThread::shared() {
    static auto *const thread = new HttpThread;
    return *thread;
}

HttpThread::HttpThread() : m_mailbox(new Mailbox) {
    m_thread.setObjectName(QStringLiteral("network"));
    m_mailbox->moveToThread(&m_thread);
    m_thread.start();
    qAddPostRoutine([] { shared().shutDown(); });
}

void HttpThread::shutDown() {
    m_mailbox->post([this] {
        for (Exchange &exchange : m_exchanges)
            exchange.reply->disconnect();
        m_exchanges.clear();
        delete std::exchange(m_manager, nullptr);
        m_thread.quit();
    });
    m_thread.wait();
}

quint64 HttpThread::start(HttpRequest request, std::shared_ptr<HttpReceiver> receiver) {
    static std::atomic<quint64> last{0};
    const quint64 id = ++last;
    m_mailbox->post([this, id, request = std::move(request), receiver = std::move(receiver)] {
        send(id, request, receiver);
    });
    return id;
}

void HttpThread::abort(quint64 id) {
    m_mailbox->post([this, id] { drop(id); });
}

void HttpThread::useTransport(QNetworkAccessManager &manager) {
    manager.setProxyFactory(new ProxyChoice);
    manager.setCookieJar(new NoCookies);
    manager.setAutoDeleteReplies(false);
}

void HttpThread::send(quint64 id, const HttpRequest &request, std::shared_ptr<HttpReceiver> receiver) {
    if (!m_manager) {
        m_manager = new QNetworkAccessManager;
        useTransport(*m_manager);
    }
    QNetworkRequest outgoing(request.url);
    outgoing.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    outgoing.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    outgoing.setTransferTimeout(static_cast<int>(request.idleTimeout.count()));
    for (const auto &[name, value] : request.headers)
        outgoing.setRawHeader(name, value);

    QNetworkReply *reply = nullptr;
    if (request.body.isEmpty()) {
        reply = m_manager->sendCustomRequest(outgoing, request.method);
    } else {
        outgoing.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
        outgoing.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
        auto *body = new OnceReadable(request.body, nullptr);
        reply = m_manager->sendCustomRequest(outgoing, request.method, body);
        body->setParent(reply);
    }
    m_exchanges.insert(id, {std::move(receiver), reply, false});
    QObject::connect(reply, &QNetworkReply::metaDataChanged, m_mailbox, [this, id] { tellHead(id); });
    QObject::connect(reply, &QNetworkReply::readyRead, m_mailbox, [this, id] { tellBytes(id); });
    QObject::connect(reply, &QNetworkReply::finished, m_mailbox, [this, id] { tellEnd(id); });
}

bool HttpThread::tellHead(quint64 id) {
    const auto found = m_exchanges.find(id);
    if (found == m_exchanges.end())
        return false;
    if (found->headTold)
        return true;
    const QVariant status = found->reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid())
        return true;
    found->headTold = true;
    if (found->receiver->head(status.toInt()) == HttpReceiver::Next::goOn)
        return true;
    drop(id);
    return false;
}

void HttpThread::tellBytes(quint64 id) {
    if (!tellHead(id))
        return;
    const Exchange exchange = m_exchanges.value(id);
    const QByteArray piece = exchange.reply->isOpen() ? exchange.reply->readAll() : QByteArray();
    if (!piece.isEmpty())
        exchange.receiver->bytes(piece);
}

void HttpThread::tellEnd(quint64 id) {
    if (!tellHead(id))
        return;
    tellBytes(id);
    const Exchange exchange = m_exchanges.value(id);
    const QNetworkReply::NetworkError error = exchange.reply->error();
    std::optional<HttpError> failure;
    if (error != QNetworkReply::NoError && !(exchange.headTold && isMerelyStatus(error))) {
        const auto reason = error == QNetworkReply::OperationCanceledError ? HttpError::Reason::timedOut
                                                                           : HttpError::Reason::connection;
        failure.emplace(reason, describe(error, *exchange.reply));
    }
    drop(id);
    exchange.receiver->end(failure);
}

void HttpThread::drop(quint64 id) {
    const auto found = m_exchanges.find(id);
    if (found == m_exchanges.end())
        return;
    QNetworkReply *const reply = found->reply;
    m_exchanges.erase(found);
    // Its end closes the connection. Not in this call, which may come out of a signal of the reply.
    reply->disconnect(m_mailbox);
    reply->deleteLater();
}
