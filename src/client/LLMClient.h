#pragma once

#include "client/ChunkStream.h"
#include "client/OstrelinError.h"
#include "platform/Http.h"
#include "records/Conversation.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

#include <memory>

/// Whether the model may think before it answers.
enum class Thinking { off, on };

/// Whether a request asks for a new reply, or for the rest of the assistant message it ends with.
enum class Continuation { newReply, finalMessage };

/// What a streamed request says.
struct StreamRequest {
    QJsonArray messages; ///< objects as the wire wants them
    QJsonArray tools;    ///< none are offered if empty
    Sampling sampling;
    Thinking thinking = Thinking::off;
    int maxTokens = 0;
    Continuation continuation = Continuation::newReply;
};

/// All that is said over HTTP to the inference server's chat completions. A plain value, made afresh
/// for every request; it knows nothing of conversations and repeats nothing: one call, one request.
struct LLMClient {
    QUrl baseURL;   ///< without a trailing slash
    QString apiKey; ///< the bearer token; no such header is sent if empty

    /// The model's name on the wire, whichever model runs.
    static constexpr QStringView modelName = u"ostrelin";

    /// One answer in one piece, without thinking and tools. An answer that lacks the text gives an empty
    /// one. Throws OstrelinError for a status outside 200 to 299, HttpError for a failed connection,
    /// JsonError for a body that isn't JSON, Cancelled when stopped. Main thread.
    Task<QString> complete(QJsonArray messages, Sampling sampling, int maxTokens, std::stop_token stop) const;

    /// Sends the request and returns at once. The stream throws OstrelinError for a status outside 200
    /// to 299 and HttpError for a connection that fails. Main thread.
    std::unique_ptr<ChunkStream> stream(const StreamRequest &request) const;

    /// The requests that the two calls send.
    HttpRequest completeRequest(const QJsonArray &messages, const Sampling &sampling, int maxTokens) const;
    HttpRequest streamRequest(const StreamRequest &request) const;
};

/// Raised for an answer that isn't JSON; what() is the parser's word.
class JsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
