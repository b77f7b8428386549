#include "platform/Http.h"

#include "platform/Channel.h"
#include "platform/HttpThread.h"

#include <algorithm>

namespace {

const char *sentence(HttpError::Reason reason) {
    switch (reason) {
    case HttpError::Reason::notConnected:
        return "The Internet connection appears to be offline.";
    case HttpError::Reason::lost:
        return "The network connection was lost.";
    case HttpError::Reason::timedOut:
        return "The request timed out.";
    case HttpError::Reason::unreachable:
        return "Could not connect to the server.";
    case HttpError::Reason::unknownHost:
        return "A server with the specified hostname could not be found.";
    case HttpError::Reason::insecure:
        return "A secure connection to the server could not be made.";
    case HttpError::Reason::badAddress:
        return "The address is not supported.";
    case HttpError::Reason::tooManyRedirects:
        return "The server redirected the request too many times.";
    case HttpError::Reason::badAnswer:
        return "The server's answer could not be understood.";
    case HttpError::Reason::tooLong:
        return "The answer is too long.";
    case HttpError::Reason::other:
        break;
    }
    return "The request failed.";
}

} // namespace

HttpError::HttpError(Reason reason) : std::runtime_error(sentence(reason)), m_reason(reason) {}

bool isLoopback(const QString &host) {
    return host == QLatin1String("localhost") || host == QLatin1String("::1") ||
           (host.startsWith(QLatin1String("127.")) && std::all_of(host.begin(), host.end(), [](QChar each) {
                return each == u'.' || (each >= u'0' && each <= u'9');
            }));
}

HttpExchange::HttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver)
    : m_id(HttpThread::shared().start(std::move(request), std::move(receiver))) {}

HttpExchange::~HttpExchange() {
    abort();
}

HttpExchange &HttpExchange::operator=(HttpExchange &&other) noexcept {
    if (this != &other) {
        abort();
        m_id = std::exchange(other.m_id, 0);
    }
    return *this;
}

void HttpExchange::goOn() {
    if (m_id != 0)
        HttpThread::shared().goOn(m_id);
}

void HttpExchange::abort() {
    if (m_id != 0)
        HttpThread::shared().abort(std::exchange(m_id, 0));
}

namespace {

enum class Wanted { head, body };

/// Collects an answer and hands it over at its end.
class Answer : public HttpReceiver {
public:
    Answer(std::shared_ptr<Channel<HttpResponse>> channel, Wanted wanted, const HttpRequest &request)
        : m_channel(std::move(channel)),
          m_wanted(wanted),
          m_reading(request.reading),
          m_longBody(request.longBody),
          m_longestBody(request.longestBody) {}

    Next head(int status) override {
        m_response.status = status;
        const bool isRead =
            m_reading == HttpRequest::Reading::ofEveryStatus || (status >= 200 && status <= 299);
        if (m_wanted == Wanted::body && isRead)
            return Next::goOn;
        end(std::nullopt);
        return Next::hangUp;
    }

    Next bytes(const QByteArray &piece) override {
        const bool isCut = m_longBody == HttpRequest::LongBody::isCut;
        m_response.body += piece;
        if (m_response.body.size() < m_longestBody || (!isCut && m_response.body.size() == m_longestBody))
            return Next::goOn;
        m_response.body.truncate(m_longestBody);
        end(isCut ? std::nullopt : std::optional(HttpError(HttpError::Reason::tooLong)));
        return Next::hangUp;
    }

    void end(std::optional<HttpError> error) override {
        if (!error)
            m_channel->push(std::move(m_response));
        m_channel->close(error ? std::make_exception_ptr(*error) : nullptr);
    }

private:
    std::shared_ptr<Channel<HttpResponse>> m_channel;
    const Wanted m_wanted;
    const HttpRequest::Reading m_reading;
    const HttpRequest::LongBody m_longBody;
    const qsizetype m_longestBody;
    HttpResponse m_response;
};

Task<HttpResponse> fetchWanted(HttpRequest request, Wanted wanted, std::stop_token stop) {
    auto channel = std::make_shared<Channel<HttpResponse>>();
    auto receiver = std::make_shared<Answer>(channel, wanted, request);
    const HttpExchange exchange(std::move(request), std::move(receiver));
    std::optional<HttpResponse> response = co_await channel->next(stop);
    if (!response)
        throw Cancelled();
    co_return std::move(*response);
}

} // namespace

Task<HttpResponse> fetch(HttpRequest request, std::stop_token stop) {
    return fetchWanted(std::move(request), Wanted::body, stop);
}

Task<int> fetchStatus(HttpRequest request, std::stop_token stop) {
    const HttpResponse response = co_await fetchWanted(std::move(request), Wanted::head, stop);
    co_return response.status;
}
