#pragma once

#include "pages/drawing/Focus.h"
#include "screens/ChatRows.h"
#include "screens/Glide.h"

#include <QHash>
#include <QListView>

/// The list of saved chats, with a marker behind the open one and a dot at the end of one that answers. The
/// arrow keys lead from row to row, and Return opens; a row's menu comes by mouse, by the menu key and by
/// Shift+F10. Only rows in sight cost anything.
class ChatList : public QListView {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ChatList(const Look &look, QWidget *parent = nullptr);

    /// Shows these chats in that order. `openID` is the open one; null for none.
    void setChats(const QList<ConversationSummary> &chats, const QUuid &openID);

    /// Which chat's reply is being written; null for none.
    void setAnswering(const QUuid &id) { m_rows.setAnswering(id); }

    /// Where the marker is now, in the viewport's coordinates; empty while there is none.
    QRectF marker() const;

    /// The frame of a chat's row in the viewport's coordinates; empty if it has none.
    QRect frameOf(const QUuid &id) const;

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_keyFocus.isByKey() && hasFocus(); }

Q_SIGNALS:
    /// The person wants to see that chat, to give it another title, or to delete it.
    void chosen(const QUuid &id);
    void renameRequested(const ConversationSummary &chat);
    void deleteRequested(const QUuid &id);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    class Delegate;

    QHash<QUuid, QString> titlesInSight() const;
    void replaceRows(const QList<ConversationSummary> &chats);
    void keepCursor(const QUuid &id, int row);
    void selectOpenRow();
    void followSelection();
    void moveMarker();
    void choose(const QModelIndex &index);
    void openMenu(const QModelIndex &index, const QPoint &place);

    const Look &m_look;
    ChatRows m_rows;
    QUuid m_openID;
    int m_markedRow = -1;
    Glide m_marker;                    ///< in rows
    QHash<QUuid, QString> m_oldTitles; ///< of rows in sight whose title has just changed
    Glide m_titles;                    ///< from the old titles to the new ones
    KeyFocus m_keyFocus;
};
