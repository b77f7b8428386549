#pragma once

#include "records/Conversation.h"

/// Keeps chats on disk: a JSON file each, and an index from which the sidebar lists them.
///
/// It holds no state between calls: the disk is the truth, and the index can always be rebuilt from
/// the chat files. No call reports a failure but load(). Each file is replaced atomically, so a reader
/// (the scheduled runner is a second process) always sees a whole one; an index update lost to the
/// other process is healed when that chat is saved again.
///
/// Main thread only.
class ChatStore {
public:
    /// All chats, newest first; of equal dates the one earlier in the index first. An index that is
    /// missing or damaged is rebuilt.
    QList<ConversationSummary> list() const;

    /// The chat of that id; nothing if its file is missing or damaged. A damaged file stays.
    std::optional<Conversation> load(const QUuid &id) const;

    /// Writes the chat's file and puts its row at the end of the index. `updatedAt` is the caller's.
    void save(const Conversation &conversation) const;

    /// Removes the chat's file and its row.
    void remove(const QUuid &id) const;

    /// Makes the index anew from the chat files; gives its rows newest first.
    QList<ConversationSummary> rebuildIndex() const;

    /// Replaces the index by these rows, in this order.
    void writeIndex(const QList<ConversationSummary> &summaries) const;
};
