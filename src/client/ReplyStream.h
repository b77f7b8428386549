#pragma once

#include "client/ChunkStream.h"
#include "platform/Channel.h"
#include "platform/Http.h"

#include <memory>
#include <optional>

/// A reply that is being streamed. Lines are read and decoded on the network thread into a queue
/// without a limit, so the reading never waits for the consumer. Destroying the stream, or requesting
/// the stop of a next() that waits, closes the connection at once, which is what makes the server stop
/// generating.
///
/// next() throws OstrelinError for a status outside 200 to 299 and HttpError for a connection that fails.
class ReplyStream : public ChunkStream {
public:
    /// Sends `request` and begins to read.
    explicit ReplyStream(HttpRequest request);

    Task<std::optional<StreamChunk>> next(std::stop_token stop) override;

private:
    std::shared_ptr<Channel<StreamChunk>> m_chunks;
    HttpExchange m_exchange;
};
