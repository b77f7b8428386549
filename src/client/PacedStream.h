#pragma once

#include "client/LLMClient.h"
#include "records/Settings.h"

#include <chrono>
#include <memory>
#include <optional>

class Clock;

/// How gently the machine works at a reply.
struct Pace {
    int burstTokens = 0; ///< pieces of text between two rests; the server sends one for each token
    std::chrono::milliseconds rest{0};
};

/// The pace of a speed; nothing for full speed, which has none.
std::optional<Pace> paceOf(ResponseSpeed speed);

/// A reply that comes in bursts, with the server at rest in between: after a burst the request is given up,
/// which ends the server's work, and after the rest another one asks for the rest of the half-written
/// message. What is read is the same as of an unpaced reply, but that the reason of the end stands in a last
/// chunk of its own, and that nothing closes it beyond that.
///
/// Only text counts as part of a burst: thinking and tool calls come without a pause. A server that begins
/// the reply anew rather than going on with it ends it. next() throws what the client's streams throw, and
/// that is the end.
class PacedStream : public ChunkStream {
public:
    /// Sends `request`, whose `maxTokens` are those of the whole reply. `clock` must outlive this object.
    PacedStream(LLMClient client, StreamRequest request, Pace pace, Clock &clock);

    Task<std::optional<StreamChunk>> next(std::stop_token stop) override;

private:
    StreamRequest continuation() const;
    bool startsAgain(const StreamChunk &chunk) const;
    void take(const StreamChunk &chunk);
    void endRequest();
    void end(const QString &finishReason);

    const LLMClient m_client;
    const StreamRequest m_request;
    const Pace m_pace;
    Clock &m_clock;

    std::unique_ptr<ChunkStream> m_stream; ///< the present request; nothing while it rests, and at the end
    QString m_text;                        ///< of all requests
    QString m_reasoning;
    bool m_isContinued = false;            ///< the present request asks for the rest of the message
    int m_burstCount = 0;                  ///< pieces of text in the present request
    int m_remaining;                       ///< chunks that the reply may still have
    std::optional<QString> m_finishReason; ///< to be told
    bool m_hasEnded = false;
};
