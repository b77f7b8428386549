#include "records/Conversation.h"

#include "records/Characters.h"

#include <QtNumeric>

namespace {

/// The characters that a model sees as one token, on a rough average.
constexpr qint64 charactersPerToken = 4;

} // namespace

Conversation newConversation(const QDateTime &now, const QString &title) {
    Conversation conversation;
    conversation.id = QUuid::createUuid();
    conversation.title = title;
    conversation.createdAt = now;
    conversation.updatedAt = now;
    return conversation;
}

ConversationSummary summaryOf(const Conversation &conversation) {
    qint64 characters = 0;
    for (const Message &message : conversation.messages) {
        if (qAddOverflow(characters, qint64{characterCount(message.content)}, &characters))
            qFatal("A chat holds more characters than 64 bits count");
    }
    return {conversation.id, conversation.title, conversation.updatedAt, characters / charactersPerToken};
}
