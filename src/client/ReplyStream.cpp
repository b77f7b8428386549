#include "client/ReplyStream.h"

#include "client/LineReader.h"
#include "client/ReplyStatus.h"

using namespace Qt::StringLiterals;

namespace {

/// Turns the answer's bytes into chunks, on the network thread.
class Producer : public HttpReceiver {
public:
    explicit Producer(std::shared_ptr<Channel<StreamChunk>> chunks) : m_chunks(std::move(chunks)) {}

    Next head(int status) override {
        const auto refusal = refusalOf(status);
        if (!refusal)
            return Next::goOn;
        m_chunks->close(std::make_exception_ptr(*refusal));
        return Next::hangUp;
    }

    Next bytes(const QByteArray &piece) override {
        m_lines.feed(piece);
        while (const auto line = m_lines.next()) {
            if (take(*line) == Next::hangUp)
                return Next::hangUp;
        }
        return Next::goOn;
    }

    void end(std::optional<HttpError> error) override {
        if (!error) {
            if (const auto last = m_lines.rest())
                take(*last);
        }
        m_chunks->close(error ? std::make_exception_ptr(*error) : nullptr);
    }

private:
    Next take(QByteArrayView line) {
        std::optional<StreamChunk> chunk = parseStreamLine(line);
        if (!chunk)
            return Next::goOn;
        const bool isLast = chunk->finishReason == u"done"_s;
        m_chunks->push(std::move(*chunk));
        if (!isLast)
            return Next::goOn;
        m_chunks->close();
        return Next::hangUp;
    }

    std::shared_ptr<Channel<StreamChunk>> m_chunks;
    LineReader m_lines;
};

} // namespace

ReplyStream::ReplyStream(HttpRequest request)
    : m_chunks(std::make_shared<Channel<StreamChunk>>()),
      m_exchange(std::move(request), std::make_shared<Producer>(m_chunks)) {}

Task<std::optional<StreamChunk>> ReplyStream::next(std::stop_token stop) {
    // Here and not when the stream dies: whoever stops it may end the server next, before the reader
    // gets its turn, and a server that still has a reader lingers.
    const std::stop_callback hangUp(stop, [this] { m_exchange = HttpExchange(); });
    co_return co_await m_chunks->next(stop);
}
