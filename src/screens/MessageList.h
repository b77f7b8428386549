#pragma once

#include "screens/Glide.h"
#include "screens/MessageRowModel.h"
#include "screens/RowHeights.h"
#include "screens/TextView.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QSet>

class Clock;
class Look;
class MessageRow;

/// The messages of a chat, in a column in the middle. Only the rows in and near the sight are there as
/// widgets, so a chat of any length opens at once. The list follows its end for as long as the reader
/// is there, and stays where the reader is otherwise.
class MessageList : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// `look` and `clock` must outlive this object.
    MessageList(const Look &look, Clock &clock, QWidget *parent = nullptr);
    ~MessageList() override;

    /// Shows these rows. Those that draw the same as before aren't touched. Another `conversationID` is
    /// another chat, which is shown from its end, and rises to its place.
    void setRows(const QUuid &conversationID, const QList<MessageRowModel> &rows);

    /// The widget of a row; nothing while the row is far out of sight.
    MessageRow *rowWidget(const QUuid &id) const { return m_widgets.value(id); }
    int widgetCount() const { return int(m_widgets.size()); }

    /// True while the reader is at the end.
    bool followsEnd() const { return m_followsEnd; }

    /// Leads the reader to the end, and follows it from there.
    void goToEnd();

    /// Moves by a page, up if `pages` is negative.
    void movePages(int pages);

Q_SIGNALS:
    void followsEndChanged();
    /// The person wants to have this text on the clipboard.
    void copyRequested(const QString &text);
    /// The person wants another reply in the place of the last one.
    void regenerateRequested();
    /// The person opens a page, or wants one that couldn't be made to be tried again.
    void pageOpened(const PageSnapshot &page);
    void pageRetried();
    /// The person answers a card.
    void searchAnswered(PermissionChoice choice);
    void pageAnswered(bool isAccepted);
    void memoryAnswered(bool isAccepted);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    /// What stays while rows are measured.
    enum class Hold { end, place };
    /// What is different about the rows: nothing, what is in some of them, or which there are.
    enum class Change { none, content, rows };

    int columnWidth() const;
    int columnLeft() const;
    int end() const;
    int offset() const;
    QList<int> estimates(const QList<MessageRowModel> &rows) const;

    Change replaceRows(const QList<MessageRowModel> &rows);
    void updateRow(int row, const MessageRowModel &model);
    void takeHeight(MessageRow *widget);
    /// Lays a row anew, and gives where the sight begins if the reader's place stays.
    int laidAnew(int row, MessageRow *widget);
    void estimateAll();
    /// Follows the end, which was at `before`. Only for rows that come: a reply grows so often that the
    /// list would never rest, and would paint everything in sight for every frame.
    void glideToEnd(int before);
    void setFollowsEnd(bool followsEnd);
    void setOffset(int offset);
    void arrange();
    /// Lets go of the rows that the person has unfolded and that have left the sight: they start anew.
    void renewRows();
    QRect placeOf(int row) const;
    void measureInSight(Hold hold);
    bool measure(int row);
    void placeWidgets();
    /// Finds the row that the pointer is over.
    void followPointer();
    MessageRow *widgetOf(int row);
    void putInOrder(MessageRow *widget, int row);
    void reveal(const MessageRow *row, const QRect &caret);
    bool focusRow(int row, int step, Qt::FocusReason reason);
    int indexOf(const QUuid &id) const;

    const Look &m_look;
    Clock &m_clock;
    QUuid m_conversationID;
    QList<MessageRowModel> m_rows;
    RowHeights m_heights;
    QHash<QUuid, MessageRow *> m_widgets;
    QSet<QUuid> m_unfolded; ///< rows of which something was unfolded, or folded
    Glide m_glide;
    Glide m_arrival; ///< how far the rows are below their places
    bool m_followsEnd = true;
    bool m_isArranging = false;
};
