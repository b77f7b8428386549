#pragma once

#include "records/Conversation.h"

#include <QAbstractListModel>

/// The chats of the sidebar as a list of rows, which a view asks for as it needs them.
class ChatRows : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Replaces all rows.
    void setChats(const QList<ConversationSummary> &chats);
    const QList<ConversationSummary> &chats() const { return m_chats; }

    /// The chat of a row; `index` must be valid.
    const ConversationSummary &chat(const QModelIndex &index) const { return m_chats.at(index.row()); }

    /// The chat whose reply is being written; null for none.
    void setAnswering(const QUuid &id);
    bool isAnswering(const QModelIndex &index) const { return chat(index).id == m_answeringID; }

    /// The row of a chat; an invalid index if it has none.
    QModelIndex indexOf(const QUuid &id) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QList<ConversationSummary> m_chats;
    QUuid m_answeringID;
};
