#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>

#include <utility>

/// What a scripted engine answers to one request, step by step. A body step goes out as one chunk of a
/// chunked HTTP body, so a script decides where the reader's pieces end.
class Script {
public:
    struct Step {
        enum class Kind {
            bytes,  ///< send these bytes of the body
            pause,  ///< do nothing for that long
            hold,   ///< do nothing until the engine is told to go on
            drop,   ///< close the connection in the middle
            reset,  ///< break the connection in the middle
            repeat, ///< send these bytes for ever, one time a millisecond
        };
        Kind kind;
        QByteArray bytes;
        int milliseconds = 0;
    };

    explicit Script(int httpStatus = 200) : status(httpStatus) {}

    /// An answer whose body goes out as it is, with no chunks, and ends with the connection. How long it
    /// is, a header may say, or misstate.
    static Script plain(int httpStatus = 200);

    /// An answer that is never begun: the connection closes without a word.
    static Script hangUp();
    /// An answer that is never begun, on a connection that stays.
    static Script silence();

    Script &raw(const QByteArray &bytes);
    Script &pause(int milliseconds);
    Script &hold();
    Script &drop();
    Script &reset();
    Script &header(const QByteArray &name, const QByteArray &value);
    Script &repeat(const QByteArray &bytes);

    /// A "data:" event with this JSON, and the blank line after it.
    Script &event(const QJsonObject &json);
    /// An event with a piece of text, of thinking, with a fragment of a tool call, with the reason of the
    /// end.
    Script &content(const QString &text);
    Script &reasoning(const QString &text);
    Script &call(const QJsonObject &fragment);
    Script &finish(const QString &reason);
    /// The closing "data: [DONE]".
    Script &done();

    /// A whole reply: each piece an event, "stop", and the close.
    static Script reply(const QStringList &pieces);
    /// A whole reply that calls one tool.
    static Script toolCall(const QString &id, const QString &name, const QString &arguments);

    enum class Begin { withHead, hangUp, silence };
    enum class Body { chunked, plain };

    int status;
    Begin begin = Begin::withHead;
    Body body = Body::chunked;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QList<Step> steps;
};

/// A chat-completion chunk with this delta and finish reason ("" for none).
QJsonObject completionChunk(const QJsonObject &delta, const QString &finishReason = {});
