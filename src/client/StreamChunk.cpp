#include "client/StreamChunk.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> text(const QJsonValue &value) {
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

qint64 integer(const QJsonValue &value) {
    return value.isDouble() ? value.toInteger(0) : 0;
}

bool holdsOnlyObjects(const QJsonArray &array) {
    return std::all_of(array.begin(), array.end(), [](const QJsonValue &item) { return item.isObject(); });
}

ToolCallDelta deltaOf(const QJsonObject &call) {
    const QJsonObject function = call["function"_L1].toObject();
    return {integer(call["index"_L1]), text(call["id"_L1]), text(function["name"_L1]),
            text(function["arguments"_L1])};
}

QList<ToolCallDelta> deltasOf(const QJsonValue &toolCalls) {
    const QJsonArray calls = toolCalls.toArray();
    QList<ToolCallDelta> deltas;
    if (holdsOnlyObjects(calls)) {
        for (const QJsonValue &call : calls)
            deltas.append(deltaOf(call.toObject()));
    }
    return deltas;
}

/// One walk over the few keys that a delta has, instead of a search for each that it might have.
void readDelta(const QJsonObject &delta, StreamChunk &chunk) {
    for (auto entry = delta.begin(); entry != delta.end(); ++entry) {
        const auto key = entry.key();
        if (key == "content"_L1)
            chunk.content = entry->toString();
        else if (key == "reasoning_content"_L1)
            chunk.reasoning = entry->toString();
        else if (key == "tool_calls"_L1)
            chunk.toolDeltas = deltasOf(*entry);
    }
}

} // namespace

std::optional<StreamChunk> parseStreamLine(QByteArrayView line) {
    constexpr QByteArrayView field = "data:";
    if (!line.startsWith(field))
        return std::nullopt;
    QByteArrayView data = line.sliced(field.size());
    if (data.startsWith(' '))
        data = data.sliced(1);
    if (data == QByteArrayView("[DONE]"))
        return StreamChunk{.content = {}, .reasoning = {}, .toolDeltas = {}, .finishReason = u"done"_s};

    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromRawData(data.data(), data.size()));
    const QJsonArray choices = document["choices"_L1].toArray();
    // Nearly always there is just one, which is taken out once.
    const QJsonValue first = choices.first();
    if (!first.isObject() || (choices.size() > 1 && !holdsOnlyObjects(choices)))
        return std::nullopt;
    const QJsonObject choice = first.toObject();
    StreamChunk chunk;
    chunk.finishReason = text(choice["finish_reason"_L1]);
    readDelta(choice["delta"_L1].toObject(), chunk);
    return chunk;
}

void ToolCallAssembler::ingest(const ToolCallDelta &delta) {
    Partial &partial = calls[delta.index];
    if (delta.id && !delta.id->isEmpty())
        partial.id = *delta.id;
    if (delta.name && !delta.name->isEmpty())
        partial.name = *delta.name;
    if (delta.arguments)
        partial.arguments += *delta.arguments;
}

QList<ToolCall> ToolCallAssembler::finished() const {
    QList<ToolCall> result;
    for (const auto &[index, partial] : calls)
        result.append({partial.id.isEmpty() ? u"call_"_s + QString::number(index) : partial.id, partial.name,
                       partial.arguments});
    return result;
}
