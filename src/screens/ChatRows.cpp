#include "screens/ChatRows.h"

#include "pages/PageDate.h"
#include "screens/ShownTitle.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void ChatRows::setChats(const QList<ConversationSummary> &chats) {
    beginResetModel();
    m_chats = chats;
    endResetModel();
}

void ChatRows::setAnswering(const QUuid &id) {
    if (m_answeringID == id)
        return;
    for (const QModelIndex &changed : {indexOf(std::exchange(m_answeringID, id)), indexOf(id)}) {
        if (changed.isValid())
            Q_EMIT dataChanged(changed, changed);
    }
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
    if (role == Qt::DisplayRole)
        return shownTitle(chat(index).title);
    if (role != Qt::AccessibleDescriptionRole)
        return {};
    // Chats of one title are told apart by their dates.
    const QString date = shownDateAndTime(chat(index).updatedAt);
    return isAnswering(index) ? u"Answering, "_s + date : date;
}
