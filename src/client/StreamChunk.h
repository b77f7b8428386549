#pragma once

#include "records/Conversation.h"

#include <QList>
#include <QString>

#include <map>
#include <optional>

/// One fragment of one tool call, as the server streams it.
struct ToolCallDelta {
    qint64 index = 0;                 ///< which call of the reply it belongs to
    std::optional<QString> id;        ///< usually on the first fragment only
    std::optional<QString> name;      ///< usually on the first fragment only
    std::optional<QString> arguments; ///< a piece of the JSON text of the arguments

    bool operator==(const ToolCallDelta &) const = default;
};

/// One decoded event of a reply's stream.
struct StreamChunk {
    QString content;
    QString reasoning;
    QList<ToolCallDelta> toolDeltas;     ///< in wire order
    std::optional<QString> finishReason; ///< "done" for the line that closes the stream

    bool operator==(const StreamChunk &) const = default;
};

/// One line of a streamed answer, without its line end, as a chunk; nothing for a line that carries
/// none, malformed ones included. (The format is that of server-sent events, WHATWG HTML, with the
/// JSON of a chat-completion chunk as data.) Any thread.
std::optional<StreamChunk> parseStreamLine(QByteArrayView line);

/// Puts tool calls together from their fragments, in whatever order these come: of id and name the
/// last one that isn't empty counts, arguments accumulate.
class ToolCallAssembler {
public:
    struct Partial {
        QString id;
        QString name;
        QString arguments;

        bool operator==(const Partial &) const = default;
    };

    void ingest(const ToolCallDelta &delta);

    /// The calls in ascending order of their index. One that never got an id is named "call_" and its
    /// index, so that it can still be answered.
    QList<ToolCall> finished() const;

    std::map<qint64, Partial> calls;
};
