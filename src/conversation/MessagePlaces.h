#pragma once

#include "records/Conversation.h"

/// Where the messages of a chat stand that a turn looks for. Each gives a place in the list, or -1. Any
/// thread.

/// The last message of the assistant.
qsizetype lastAssistant(const QList<Message> &messages);

/// The last message that made the call with that id.
qsizetype lastWithCall(const QList<Message> &messages, const QString &callID);
