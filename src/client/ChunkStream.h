#pragma once

#include "client/StreamChunk.h"
#include "platform/Task.h"

#include <optional>

/// A reply that arrives in chunks. Destroying the stream ends the work behind it at once.
class ChunkStream {
public:
    virtual ~ChunkStream() = default;

    /// The next chunk; nothing at the end, and nothing once `stop` is requested. Throws what went wrong.
    /// One call at a time, on the main thread; the stream must outlive the call.
    virtual Task<std::optional<StreamChunk>> next(std::stop_token stop) = 0;
};
