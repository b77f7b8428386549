#include "conversation/ChatTitle.h"

#include "records/Characters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxTitleTokens = 20;
constexpr qsizetype longestTitle = 80;

/// The first message of that role; nothing if there is none.
const Message *first(const Conversation &conversation, Role role) {
    const auto found = std::find_if(conversation.messages.begin(), conversation.messages.end(),
                                    [role](const Message &message) { return message.role == role; });
    return found == conversation.messages.end() ? nullptr : &*found;
}

QJsonArray questionFor(const Conversation &conversation) {
    const Message *const message = first(conversation, Role::user);
    const QString text =
        u"Give this conversation a title of 6 words or fewer. Reply with the title only.\n\n"_s +
        (message ? message->content : QString());
    return {QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, text}}};
}

} // namespace

Task<std::optional<QString>> makeTitle(LLMClient client, Sampling sampling, Conversation conversation,
                                       std::stop_token stop) {
    if (conversation.title != defaultTitle || !first(conversation, Role::assistant))
        co_return std::nullopt;
    QString title;
    try {
        title = co_await client.complete(questionFor(conversation), sampling, maxTitleTokens, stop);
    } catch (const std::exception &) {
        co_return std::nullopt;
    }
    title = title.remove(u'"').trimmed();
    if (title.isEmpty())
        co_return std::nullopt;
    co_return firstCharacters(title, longestTitle).toString();
}
