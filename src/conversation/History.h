#pragma once

#include "records/Conversation.h"

#include <QList>

/// Fitting a conversation into the model's context. Pure functions; the stored conversation stays as
/// it is.

/// The context that is reckoned with while no model runs, in tokens.
inline constexpr qint64 defaultContextLength = 8192;

/// A rough figure of the tokens that these messages take.
qint64 estimateTokens(const QList<Message> &messages);

struct FittedHistory {
    QList<Message> messages;
    qint64 droppedCount = 0; ///< how many of the oldest were left out

    bool operator==(const FittedHistory &) const = default;
};

/// What of `messages` goes to a model with a context of `contextLength` tokens. Three quarters of it
/// are for the history. The oldest exchanges go first, a tool call always together with its answers;
/// the present question is never dropped. If that and what follows it is still too much, attached texts
/// are halved from the oldest on, and the question itself only when no attached text is left.
FittedHistory fitHistory(const QList<Message> &messages, qint64 contextLength);
