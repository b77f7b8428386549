#include "screens/ChatList.h"

#include "screens/HouseStyle.h"
#include "screens/PlainTip.h"
#include "screens/ShownTitle.h"
#include "screens/Spring.h"
#include "screens/Style.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

/// A row without the gap to the next one.
QRect framed(const QRect &row) {
    return row.adjusted(0, 0, 0, -style::chatRowGap);
}

} // namespace

/// Draws a chat's row: its title, which fades over into another one.
class ChatList::Delegate : public QStyledItemDelegate {
public:
    explicit Delegate(ChatList &list) : QStyledItemDelegate(&list), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override {
        const int text = QFontMetrics(font()).height();
        return {0, std::max(style::chatRowHeight, text + style::space) + style::chatRowGap};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const ConversationSummary &chat = m_list.m_rows.chat(index);
        const QRect frame = framed(option.rect);
        const Palette &palette = m_list.m_look.palette();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (option.state.testFlag(QStyle::State_MouseOver) && chat.id != m_list.m_openID) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(palette.cardFill());
            painter->drawRoundedRect(frame, style::radiusMark, style::radiusMark);
        }
        painter->setFont(font());
        painter->setPen(palette.ink);
        const auto old = m_list.m_oldTitles.constFind(chat.id);
        const bool fades = old != m_list.m_oldTitles.cend();
        const QRect place = placeOf(option.rect, index);
        drawTitle(*painter, place, index.data().toString(), fades ? m_list.m_titles.value() : 1);
        if (fades)
            drawTitle(*painter, place, shownTitle(*old), 1 - m_list.m_titles.value());
        if (m_list.m_rows.isAnswering(index))
            drawDot(*painter, frame, palette.accent);
        if (m_list.showsFocus() && index == m_list.currentIndex())
            drawRing(*painter, frame, style::radiusMark, palette.accent);
        painter->restore();
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override {
        const QString title = index.data().toString();
        const bool fits =
            QFontMetrics(font()).horizontalAdvance(title) <= placeOf(option.rect, index).width();
        QToolTip::showText(event->globalPos(), fits ? QString() : plainTip(title), &m_list, option.rect);
        return true;
    }

private:
    QFont font() const { return m_list.m_look.font(TextStyle::callout); }

    /// Where a row's title stands.
    QRect placeOf(const QRect &row, const QModelIndex &index) const {
        const int dot = m_list.m_rows.isAnswering(index) ? style::answeringDot + style::spaceSmall : 0;
        const QRect place = framed(row).adjusted(style::chatRowPadding, 0, -style::chatRowPadding - dot, 0);
        return QStyle::visualRect(m_list.layoutDirection(), row, place);
    }

    void drawDot(QPainter &painter, const QRect &frame, const QColor &color) const {
        QRect dot(0, 0, style::answeringDot, style::answeringDot);
        dot.moveCenter(frame.center());
        dot.moveRight(frame.right() - style::chatRowPadding);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(QStyle::visualRect(m_list.layoutDirection(), frame, dot));
    }

    void drawTitle(QPainter &painter, const QRect &place, const QString &title, double opacity) const {
        const QString shown = painter.fontMetrics().elidedText(title, Qt::ElideRight, place.width());
        const auto alignment =
            QStyle::visualAlignment(m_list.layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
        painter.setOpacity(opacity);
        painter.drawText(place, int(alignment) | Qt::TextSingleLine, shown);
        painter.setOpacity(1);
    }

    ChatList &m_list;
};

ChatList::ChatList(const Look &look, QWidget *parent)
    : QListView(parent),
      m_look(look),
      m_marker(style::markerRest, markerSpring()),
      m_titles(style::titleFade) {
    setAccessibleName(u"Chats"_s);
    setModel(&m_rows);
    setItemDelegate(new Delegate(*this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    connect(this, &QListView::clicked, this, &ChatList::choose);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ChatList::followSelection);
    connect(&m_marker, &Glide::moved, viewport(), qOverload<>(&QWidget::update));
    connect(&m_titles, &Glide::moved, viewport(), qOverload<>(&QWidget::update));
    connect(&m_titles, &Glide::arrived, this, [this] { m_oldTitles.clear(); });
    connect(&look, &Look::changed, this, [this] { scheduleDelayedItemsLayout(); });
}

void ChatList::setChats(const QList<ConversationSummary> &chats, const QUuid &openID) {
    const bool isOther = std::exchange(m_openID, openID) != openID;
    if (chats != m_rows.chats())
        replaceRows(chats);
    selectOpenRow();
    moveMarker();
    const QModelIndex open = m_rows.indexOf(openID);
    if (isOther && open.isValid()) {
        setCurrentIndex(open);
        scrollTo(open);
    }
}

QHash<QUuid, QString> ChatList::titlesInSight() const {
    QHash<QUuid, QString> titles;
    for (QModelIndex index = indexAt({width() / 2, style::spaceSmall});
         index.isValid() && visualRect(index).top() < viewport()->height();
         index = index.siblingAtRow(index.row() + 1))
        titles.insert(m_rows.chat(index).id, m_rows.chat(index).title);
    return titles;
}

void ChatList::replaceRows(const QList<ConversationSummary> &chats) {
    const QModelIndex cursor = currentIndex();
    const QUuid cursorID = cursor.isValid() ? m_rows.chat(cursor).id : QUuid();
    const int cursorRow = cursor.row();
    const QHash<QUuid, QString> before = titlesInSight();
    m_rows.setChats(chats);
    keepCursor(cursorID, cursorRow);

    m_oldTitles.clear();
    const QHash<QUuid, QString> now = titlesInSight();
    for (auto title = before.cbegin(); title != before.cend(); ++title) {
        if (now.value(title.key(), title.value()) != title.value())
            m_oldTitles.insert(title.key(), title.value());
    }
    if (!m_oldTitles.isEmpty())
        m_titles.go(0, 1, m_look.motion());
}

void ChatList::keepCursor(const QUuid &id, int row) {
    const QModelIndex same = m_rows.indexOf(id);
    const int last = m_rows.rowCount() - 1;
    // A list that changes by itself is not to scroll.
    setAutoScroll(false);
    setCurrentIndex(same.isValid() ? same : m_rows.index(std::min(row, last)));
    setAutoScroll(true);
}

void ChatList::selectOpenRow() {
    const QModelIndex open = m_rows.indexOf(m_openID);
    selectionModel()->select(open, QItemSelectionModel::ClearAndSelect);
}

void ChatList::followSelection() {
    // Only a screen reader chooses a row without opening it, or takes its choice back.
    QModelIndexList selected = selectionModel()->selectedIndexes();
    const qsizetype count = selected.size();
    selected.removeAll(m_rows.indexOf(m_openID));
    if (count == 1 && selected.isEmpty())
        return;
    const QUuid id = selected.isEmpty() ? QUuid() : m_rows.chat(selected.first()).id;
    selectOpenRow();
    if (!id.isNull())
        Q_EMIT chosen(id);
}

void ChatList::moveMarker() {
    const int before = std::exchange(m_markedRow, m_rows.indexOf(m_openID).row());
    if (m_markedRow == before)
        return;
    const bool glides = before >= 0 && m_markedRow >= 0;
    m_marker.go(glides ? m_marker.value() : m_markedRow, m_markedRow,
                glides && isVisible() ? m_look.motion() : Motion::reduced);
}

QRect ChatList::frameOf(const QUuid &id) const {
    const QModelIndex row = m_rows.indexOf(id);
    return row.isValid() ? framed(visualRect(row)) : QRect();
}

QRectF ChatList::marker() const {
    if (m_markedRow < 0)
        return {};
    const QRect first = visualRect(m_rows.index(0));
    return QRectF(framed(first)).translated(0, m_marker.value() * first.height());
}

QItemSelectionModel::SelectionFlags ChatList::selectionCommand(const QModelIndex &, const QEvent *) const {
    // The open chat is the selected one, wherever the keyboard is.
    return QItemSelectionModel::NoUpdate;
}

void ChatList::paintEvent(QPaintEvent *event) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.palette().marker());
    if (m_markedRow >= 0)
        painter.drawRoundedRect(marker(), style::radiusMark, style::radiusMark);
    painter.end();
    QListView::paintEvent(event);
}

void ChatList::focusInEvent(QFocusEvent *event) {
    m_keyFocus.take(event->reason());
    if (const QModelIndex open = m_rows.indexOf(m_openID); !currentIndex().isValid() && open.isValid())
        setCurrentIndex(open);
    if (m_keyFocus.isByKey())
        scrollTo(currentIndex());
    QListView::focusInEvent(event);
    viewport()->update();
}

void ChatList::keyPressEvent(QKeyEvent *event) {
    m_keyFocus.takeKey();
    const QModelIndex cursor = currentIndex();
    const bool opensChat =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (!cursor.isValid() || !(opensMenu(*event) || opensChat || event->key() == Qt::Key_F2))
        return QListView::keyPressEvent(event);
    if (event->isAutoRepeat())
        return;
    if (opensMenu(*event))
        openMenu(cursor, viewport()->mapToGlobal(visualRect(cursor).center()));
    else if (opensChat)
        choose(cursor);
    else
        Q_EMIT renameRequested(m_rows.chat(cursor));
}

void ChatList::choose(const QModelIndex &index) {
    // A copy: whoever opens the chat gives the list other rows.
    const QUuid id = m_rows.chat(index).id;
    Q_EMIT chosen(id);
}

void ChatList::contextMenuEvent(QContextMenuEvent *event) {
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = isByMouse ? indexAt(event->pos()) : currentIndex();
    if (index.isValid())
        openMenu(index, isByMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).center()));
}

void ChatList::openMenu(const QModelIndex &index, const QPoint &place) {
    scrollTo(index);
    const ConversationSummary chat = m_rows.chat(index);
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"Rename"_s, this, [this, chat] { Q_EMIT renameRequested(chat); });
    HouseStyle::setDestructive(
        *menu->addAction(u"Delete"_s, this, [this, chat] { Q_EMIT deleteRequested(chat.id); }));
    menu->popup(place);
}
