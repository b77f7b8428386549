#include "client/PacedStream.h"

#include "platform/Clock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

bool saysSomething(const StreamChunk &chunk) {
    return !chunk.content.isEmpty() || !chunk.reasoning.isEmpty() || !chunk.toolDeltas.isEmpty();
}

} // namespace

std::optional<Pace> paceOf(ResponseSpeed speed) {
    switch (speed) {
    case ResponseSpeed::full:
        return std::nullopt;
    case ResponseSpeed::calm:
        return Pace{.burstTokens = 16, .rest = 1s};
    case ResponseSpeed::slowYourRoll:
        return Pace{.burstTokens = 6, .rest = 5s};
    }
    Q_UNREACHABLE();
}

PacedStream::PacedStream(LLMClient client, StreamRequest request, Pace pace, Clock &clock)
    : m_client(std::move(client)),
      m_request(std::move(request)),
      m_pace(pace),
      m_clock(clock),
      m_stream(m_client.stream(m_request)),
      m_remaining(m_request.maxTokens) {}

Task<std::optional<StreamChunk>> PacedStream::next(std::stop_token stop) {
    while (!m_hasEnded) {
        if (m_finishReason) {
            m_hasEnded = true;
            co_return StreamChunk{.finishReason = m_finishReason};
        }
        if (!m_stream) {
            co_await m_clock.sleep(m_pace.rest, stop);
            if (stop.stop_requested())
                break;
            m_isContinued = true;
            m_burstCount = 0;
            m_stream = m_client.stream(continuation());
        }
        std::optional<StreamChunk> chunk;
        try {
            chunk = co_await m_stream->next(stop);
        } catch (const Cancelled &) {
            break;
        } catch (...) {
            m_hasEnded = true;
            m_stream.reset();
            throw;
        }
        if (stop.stop_requested())
            break;
        if (!chunk) {
            endRequest();
        } else if (startsAgain(*chunk)) {
            end(u"stop"_s);
        } else {
            take(*chunk);
            chunk->finishReason.reset();
            if (saysSomething(*chunk))
                co_return chunk;
        }
    }
    m_hasEnded = true;
    m_stream.reset();
    co_return std::nullopt;
}

StreamRequest PacedStream::continuation() const {
    QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, m_text}};
    if (m_request.thinking == Thinking::on && !m_reasoning.isEmpty())
        message[u"reasoning_content"_s] = m_reasoning;
    StreamRequest request = m_request;
    request.messages.append(message);
    request.maxTokens = std::min(m_pace.burstTokens, std::max(m_remaining, 1));
    request.continuation = Continuation::finalMessage;
    return request;
}

bool PacedStream::startsAgain(const StreamChunk &chunk) const {
    return m_isContinued && m_burstCount == 0 && !chunk.content.isEmpty() && m_text.startsWith(chunk.content);
}

void PacedStream::take(const StreamChunk &chunk) {
    if (!chunk.content.isEmpty()) {
        m_text += chunk.content;
        ++m_burstCount;
    }
    m_reasoning += chunk.reasoning;
    --m_remaining;
    if (chunk.finishReason == u"tool_calls"_s || chunk.finishReason == u"stop"_s)
        end(*chunk.finishReason);
    else if (m_burstCount >= m_pace.burstTokens)
        endRequest();
}

void PacedStream::endRequest() {
    m_stream.reset();
    if (m_burstCount == 0)
        end(u"stop"_s);
    else if (m_remaining <= 0)
        end(u"length"_s);
}

void PacedStream::end(const QString &finishReason) {
    m_stream.reset();
    m_finishReason = finishReason;
}
