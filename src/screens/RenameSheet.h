#pragma once

#include "records/Conversation.h"
#include "screens/Sheet.h"

class TextField;

/// Asks for another title of a chat.
class RenameSheet : public Sheet {
    Q_OBJECT

public:
    /// Covers all of `parent`. `look` must outlive this object.
    RenameSheet(const Look &look, QWidget *parent);

    /// Stands for that chat from now on, with its present title to be written over.
    void open(const ConversationSummary &chat);

Q_SIGNALS:
    /// The person has given the chat another title: without white space around it, and not empty. Who leaves
    /// the field empty or as it was keeps the old title.
    void renamed(const QUuid &id, const QString &title);

private:
    void save();

    TextField *m_title;
    QUuid m_id;
    QString m_before; ///< what stood in the field
};
