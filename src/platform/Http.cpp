#include "platform/Http.h"

#include "platform/Channel.h"
#include "platform/HttpThread.h"

HttpExchange::HttpExchange(HttpRequest request, std::shared_ptr<HttpReceiver> receiver)
    : m_id(HttpThread::shared().start(std::move(request), std::move(receiver))) {
}

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

void HttpExchange::abort() {
    if (m_id != 0)
        HttpThread::shared().abort(std::exchange(m_id, 0));
}

namespace {

/// Collects a whole answer and hands it over at its end.
class WholeAnswer : public HttpReceiver {
public:
    explicit WholeAnswer(std::shared_ptr<Channel<HttpResponse>> channel) : m_channel(std::move(channel)) {}

    Next head(int status) override {
        m_response.status = status;
        if (status >= 200 && status <= 299)
            return Next::goOn;
        end(std::nullopt);
        return Next::hangUp;
    }
    void bytes(const QByteArray &piece) override { m_response.body += piece; }
    void end(std::optional<HttpError> error) override {
        if (!error)
            m_channel->push(std::move(m_response));
        m_channel->close(error ? std::make_exception_ptr(*error) : nullptr);
    }

private:
    std::shared_ptr<Channel<HttpResponse>> m_channel;
    HttpResponse m_response;
};

} // namespace

Task<HttpResponse> fetch(HttpRequest request, std::stop_token stop) {
    auto channel = std::make_shared<Channel<HttpResponse>>();
    const HttpExchange exchange(std::move(request), std::make_shared<WholeAnswer>(channel));
    std::optional<HttpResponse> response = co_await channel->next(stop);
    if (!response)
        throw Cancelled();
    co_return std::move(*response);
}
