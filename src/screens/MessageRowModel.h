#pragma once

#include "screens/ReplyExtras.h"

#include <QStringList>
#include <QUuid>

/// One row of the message list. A plain value; its text shares its characters with the record.
struct MessageRowModel {
    enum class Kind {
        note,      ///< a line about the chat itself
        user,      ///< the person's message, in its bubble
        assistant, ///< the assistant's reply
    };

    QUuid id; ///< the row's own: the message's, unless an earlier row has it; null for a note
    Kind kind = Kind::user;
    QString text;             ///< what there is to read; may be empty
    QString reasoning;        ///< what the model thought before; may be empty
    bool isStreaming = false; ///< the reply is being written
    bool canRegenerate = false;
    QStringList attachments; ///< the names of the files that go with the message
    ReplyExtras extras;

    /// True while the model thinks, and hasn't begun to answer.
    bool isReasoningStreaming() const { return isStreaming && text.isEmpty(); }

    /// True for a reply that something can be done with.
    bool hasActions() const { return kind == Kind::assistant && !isStreaming && !text.isEmpty(); }

    /// True if there is a line at its foot: with the dots first and the actions then, so that a reply that
    /// ends moves nothing.
    bool hasFoot() const { return isStreaming || hasActions(); }

    /// True if there is nothing in the row for the keyboard to come to.
    bool isEmpty() const { return text.isEmpty() && reasoning.isEmpty() && extras.isEmpty(); }

    bool operator==(const MessageRowModel &) const = default;
};

/// True if both draw the same. Texts that share their characters aren't compared, which makes it cheap
/// to ask for every row after each piece of a streamed reply.
inline bool drawsTheSame(const MessageRowModel &one, const MessageRowModel &other) {
    const auto isSame = [](const QString &text, const QString &otherText) {
        return text.isSharedWith(otherText) || text == otherText;
    };
    return one.kind == other.kind && one.isStreaming == other.isStreaming &&
           one.canRegenerate == other.canRegenerate && isSame(one.text, other.text) &&
           isSame(one.reasoning, other.reasoning) && one.attachments == other.attachments &&
           drawsTheSame(one.extras, other.extras);
}
