#include "conversation/MessagePlaces.h"

#include <algorithm>

namespace {

template<typename Matches>
qsizetype lastThat(const QList<Message> &messages, Matches matches) {
    const auto found = std::find_if(messages.crbegin(), messages.crend(), matches);
    return std::distance(found, messages.crend()) - 1;
}

} // namespace

qsizetype lastAssistant(const QList<Message> &messages) {
    return lastThat(messages, [](const Message &message) { return message.role == Role::assistant; });
}

qsizetype lastWithCall(const QList<Message> &messages, const QString &callID) {
    return lastThat(messages, [&](const Message &message) {
        const QList<ToolCall> calls = message.toolCalls.value_or(QList<ToolCall>());
        return std::any_of(calls.begin(), calls.end(),
                           [&](const ToolCall &call) { return call.id == callID; });
    });
}
