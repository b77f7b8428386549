#pragma once

#include "platform/Task.h"

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

/// The one door through which every HTTP request of the program leaves. Requests run on a network
/// thread of their own. No cookies are kept or sent and nothing is cached; a loopback address is
/// never reached through a proxy; a request is sent once, also when the server hangs up on it. Of what its
/// reader never sees, such as the bodies of redirects, a million bytes may come.

struct HttpRequest {
    /// What becomes of an answer that sends the reader elsewhere. A request that follows takes its headers
    /// along, up to twenty times; it leaves http and https never, and one that begins with https goes on with
    /// https alone. A POST becomes a GET unless the answer is 307 or 308. It sends no name and password that
    /// an address carries.
    enum class Redirects { areAnswers, areFollowed };
    /// Whether the body may come compressed, in any way that libcurl knows. It is handed on as it was before,
    /// and is as long as that.
    enum class Compression { isRefused, isAccepted };
    /// The answers whose bodies fetch() reads.
    enum class Reading { ofSuccess, ofEveryStatus };
    /// What fetch() does with a body that is too long.
    enum class LongBody { isFailure, isCut };

    QByteArray method = "GET";
    QUrl url;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// How long the connection may stay without a byte in either direction.
    std::chrono::milliseconds idleTimeout{60'000};
    /// How long the whole exchange may take; nothing for as long as it needs.
    std::optional<std::chrono::milliseconds> wholeTimeout;
    /// How long a body fetch() reads, in bytes; of a longer one the connection closes there. A stream has no
    /// such limit.
    qsizetype longestBody = 64'000'000;
    LongBody longBody = LongBody::isFailure;
    Reading reading = Reading::ofSuccess;
    Redirects redirects = Redirects::areAnswers;
    Compression compression = Compression::isRefused;
};

/// Raised when a request or its answer doesn't get through, with a sentence that a person can read. An
/// answer with any status is no failure.
class HttpError : public std::runtime_error {
public:
    enum class Reason {
        notConnected,     ///< this machine has no way to any network
        lost,             ///< the connection stood and broke, or nothing was answered on it
        timedOut,         ///< nothing came for too long
        unreachable,      ///< no connection to the server could be made
        unknownHost,      ///< the host's name has no address
        insecure,         ///< a secure connection to the server could not be made
        badAddress,       ///< the address is none of http or https
        tooManyRedirects, ///< the server sends the reader in circles
        badAnswer,        ///< the answer isn't HTTP
        tooLong,          ///< the body is longer than the request allows, or too much comes that isn't read
        other,            ///< none of these
    };

    explicit HttpError(Reason reason);

    Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

/// Takes an answer as it arrives. All calls come from the network thread, in the order below.
class HttpReceiver {
public:
    enum class Next {
        goOn,
        hold,   ///< for bytes() alone: not now; the same piece comes again after HttpExchange::goOn()
        hangUp, ///< nothing more is called
    };

    virtual ~HttpReceiver() = default;

    /// The answer's head has arrived; where redirects are followed, that of the last answer.
    virtual Next head(int status) = 0;

    /// A piece of the body, in the sizes in which it came.
    virtual Next bytes(const QByteArray &piece) = 0;

    /// The answer is whole, or `error` tells why it never will be.
    virtual void end(std::optional<HttpError> error) = 0;
};

/// A request under way. Destroying it closes the connection at once; the receiver may then still be
/// in a call, but no further one begins. Any thread.
class HttpExchange {
public:
    HttpExchange() = default;
    HttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver);
    ~HttpExchange();
    HttpExchange(HttpExchange &&other) noexcept : m_id(std::exchange(other.m_id, 0)) {}
    HttpExchange &operator=(HttpExchange &&other) noexcept;

    /// Lets an answer whose receiver holds it back go on. While it is held back nothing is read from its
    /// connection, and its time doesn't run out. Any thread.
    void goOn();

private:
    void abort();

    quint64 m_id = 0;
};

/// True for the names and addresses of this machine's own loopback.
bool isLoopback(const QString &host);

/// A whole answer. The body is read only with a status from 200 to 299, unless the request says otherwise.
struct HttpResponse {
    int status = 0;
    QByteArray body;
};

#ifndef Q_MOC_RUN
/// Sends a request and reads the answer. Throws HttpError; throws Cancelled when `stop` is
/// requested, and closes the connection. Main thread.
Task<HttpResponse> fetch(HttpRequest request, std::stop_token stop);

/// The same for the status alone: the connection closes as soon as the answer's head has arrived.
Task<int> fetchStatus(HttpRequest request, std::stop_token stop);
#endif
