#include "screens/ChatRows.h"

#include "screens/ShownTitle.h"

#include <algorithm>

void ChatRows::setChats(const QList<ConversationSummary> &chats) {
    beginResetModel();
    m_chats = chats;
    endResetModel();
}

QModelIndex ChatRows::indexOf(const QUuid &id) const {
    const auto found = std::find_if(m_chats.begin(), m_chats.end(),
                                    [&](const ConversationSummary &chat) { return chat.id == id; });
    return found == m_chats.end() ? QModelIndex() : index(int(found - m_chats.begin()));
}

int ChatRows::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_chats.size());
}

QVariant ChatRows::data(const QModelIndex &index, int role) const {
    return role == Qt::DisplayRole ? shownTitle(chat(index).title) : QVariant();
}
