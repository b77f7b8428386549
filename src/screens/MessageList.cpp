#include "screens/MessageList.h"

#include "screens/Look.h"
#include "screens/MessageRow.h"
#include "screens/RowArea.h"
#include "screens/RowChange.h"
#include "screens/RowEstimate.h"
#include "screens/Spring.h"
#include "screens/Style.h"

#include <QFocusEvent>
#include <QScrollBar>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowPadding = style::listPadding - style::rowOutset;
constexpr int rowGap = style::rowSpacing - 2 * style::rowOutset;
constexpr int wheelStep = 24;

} // namespace

MessageList::MessageList(const Look &look, Clock &clock, QWidget *parent)
    : QAbstractScrollArea(parent),
      m_look(look),
      m_clock(clock),
      m_heights(rowPadding, rowGap),
      m_glide(style::scrollGlide),
      m_arrival(style::arrivalRest, arrivalSpring()) {
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(u"Messages"_s);
    setViewport(new RowArea(u"Messages"_s));
    viewport()->setAutoFillBackground(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Always there, so that the column doesn't move when the chat grows beyond the window.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    verticalScrollBar()->setSingleStep(wheelStep);
    setFocusPolicy(Qt::TabFocus);
    connect(&m_glide, &Glide::moved, this, [this] {
        setOffset(int(m_glide.value()));
        arrange();
    });
    connect(&m_glide, &Glide::arrived, this, &MessageList::arrange);
    connect(&m_arrival, &Glide::moved, this, &MessageList::placeWidgets);
    // Queued, since a row can be laid only when all its parts have taken the look.
    connect(
        &look, &Look::changed, this,
        [this] {
            estimateAll();
            arrange();
        },
        Qt::QueuedConnection);
}

MessageList::~MessageList() {
    // A row that goes leaves the pointer to the one behind it, which asks the list.
    qDeleteAll(std::exchange(m_widgets, {}));
}

void MessageList::setRows(const QUuid &conversationID, const QList<MessageRowModel> &rows) {
    const int endBefore = end();
    if (m_conversationID != conversationID) {
        m_conversationID = conversationID;
        m_glide.stop();
        setFollowsEnd(true);
        replaceRows({});
        m_arrival.go(style::arrivalWay, 0, isVisible() ? m_look.motion() : Motion::reduced);
    }
    const bool wasEmpty = m_rows.isEmpty();
    const bool hadKeyboard =
        std::any_of(m_widgets.cbegin(), m_widgets.cend(), std::mem_fn(&MessageRow::showsFocus));
    const Change change = replaceRows(rows);
    if (change == Change::rows && !wasEmpty)
        glideToEnd(endBefore);
    else if (change != Change::none)
        arrange();
    // What the keyboard was on may have gone.
    if (hadKeyboard && !isAncestorOf(window()->focusWidget()))
        setFocus(Qt::TabFocusReason);
}

MessageList::Change MessageList::replaceRows(const QList<MessageRowModel> &rows) {
    const RowChange change = rowChange(m_rows, rows);
    const int anchor = m_heights.rowAt(offset());
    const int past = anchor < 0 ? 0 : offset() - m_heights.top(anchor);
    const QList<MessageRowModel> before = std::exchange(m_rows, rows);
    for (const MessageRowModel &row : before.mid(change.first, change.removed))
        delete m_widgets.take(row.id);
    const QList<MessageRowModel> fresh = rows.mid(change.first, change.added);
    if (!change.isNone())
        m_heights.replace(change.first, change.removed, estimates(fresh));
    // The reader stays at the same message when rows come or go above it.
    const int anchorNow = anchor < 0 ? -1 : change.placeNow(anchor);
    if (!change.isNone() && anchorNow >= 0)
        setOffset(m_heights.top(anchorNow) + past);
    // What the person sends is there to be seen, wherever they were reading.
    const auto isUser = [](const auto &row) { return row.kind == MessageRowModel::Kind::user; };
    if (std::any_of(fresh.begin(), fresh.end(), isUser))
        setFollowsEnd(true);
    Change changed = change.isNone() ? Change::none : Change::rows;
    for (int row = 0; row < rows.size(); ++row) {
        const int place = change.placeBefore(row);
        if (place < 0 || drawsTheSame(before.at(place), rows.at(row)))
            continue;
        updateRow(row, rows.at(row));
        changed = std::max(changed, Change::content);
    }
    return changed;
}

void MessageList::updateRow(int row, const MessageRowModel &model) {
    MessageRow *widget = m_widgets.value(model.id);
    if (!widget) {
        m_heights.measure(row, estimatedRowHeight(m_look, model, columnWidth()));
        m_heights.forget(row);
        return;
    }
    widget->setModel(model);
    const int place = laidAnew(row, widget);
    if (!m_followsEnd)
        setOffset(place);
}

void MessageList::movePages(int pages) {
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(bar->value() + pages * bar->pageStep());
}

void MessageList::goToEnd() {
    setFollowsEnd(true);
    arrange();
}

void MessageList::setFollowsEnd(bool followsEnd) {
    if (std::exchange(m_followsEnd, followsEnd) != followsEnd)
        Q_EMIT followsEndChanged();
}

void MessageList::resizeEvent(QResizeEvent *event) {
    if (event->size().width() != event->oldSize().width())
        estimateAll();
    arrange();
}

void MessageList::showEvent(QShowEvent *event) {
    QAbstractScrollArea::showEvent(event);
    arrange();
}

bool MessageList::viewportEvent(QEvent *event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        followPointer();
    return QAbstractScrollArea::viewportEvent(event);
}

void MessageList::scrollContentsBy(int, int) {
    if (m_isArranging)
        return;
    m_glide.stop();
    setFollowsEnd(offset() >= end() - style::endTolerance);
    arrange();
}

void MessageList::focusInEvent(QFocusEvent *event) {
    // The list is one stop on the keyboard's way, with what the row there has to press; the arrow keys lead
    // from row to row.
    const int start =
        m_followsEnd ? int(m_rows.size()) - 1 : m_heights.rowAt(offset() + viewport()->height());
    focusRow(start, -1, event->reason());
}

bool MessageList::focusNextPrevChild(bool next) {
    // From a row backwards, the list itself would come first and lead right back into the row.
    QWidget *focused = window()->focusWidget();
    if (hasFocus() || !isAncestorOf(focused))
        return QAbstractScrollArea::focusNextPrevChild(next);
    // Rows are made at any time, which would put them behind everything else in the window.
    QWidget::setTabOrder(this, focused);
    if (next)
        return QAbstractScrollArea::focusNextPrevChild(next);
    setFocusPolicy(Qt::NoFocus);
    const bool found = QAbstractScrollArea::focusNextPrevChild(next);
    setFocusPolicy(Qt::TabFocus);
    return found;
}

void MessageList::followPointer() {
    // The rows move below the pointer, and the viewport doesn't.
    const bool isInside = viewport()->underMouse();
    const QPoint pointer = isInside ? viewport()->mapFromGlobal(QCursor::pos()) : QPoint();
    for (MessageRow *widget : std::as_const(m_widgets))
        widget->setHovering(isInside && widget->geometry().contains(pointer));
}

MessageRow *MessageList::widgetOf(int row) {
    const MessageRowModel &model = m_rows.at(row);
    MessageRow *&widget = m_widgets[model.id];
    if (widget)
        return widget;
    auto *made = new MessageRow(m_look, m_clock, model, viewport());
    widget = made;
    putInOrder(made, row);
    connect(made, &MessageRow::heightChanged, this, [this, made] { takeHeight(made); });
    connect(made, &MessageRow::caretMoved, this, [this, made](const QRect &caret) { reveal(made, caret); });
    connect(made, &MessageRow::pointerCrossed, this, &MessageList::followPointer);
    connect(made, &MessageRow::copyRequested, this,
            [this, made] { Q_EMIT copyRequested(made->model().text); });
    connect(made, &MessageRow::regenerateRequested, this, &MessageList::regenerateRequested);
    connect(made, &MessageRow::pageOpened, this, &MessageList::pageOpened);
    connect(made, &MessageRow::pageRetried, this, &MessageList::pageRetried);
    connect(made, &MessageRow::searchAnswered, this, &MessageList::searchAnswered);
    connect(made, &MessageRow::pageAnswered, this, &MessageList::pageAnswered);
    connect(made, &MessageRow::memoryAnswered, this, &MessageList::memoryAnswered);
    connect(made, &MessageRow::left, this, [this, made](TextView::Edge edge) {
        const int step = edge == TextView::Edge::top ? -1 : 1;
        focusRow(indexOf(made->model().id) + step, step, Qt::TabFocusReason);
    });
    return made;
}

void MessageList::putInOrder(MessageRow *widget, int row) {
    // A screen reader goes through the rows in the order of the children.
    const int last = m_heights.rowAt(offset() + 2 * viewport()->height());
    for (int next = row + 1; next <= last; ++next) {
        if (MessageRow *below = m_widgets.value(m_rows.at(next).id))
            return widget->stackUnder(below);
    }
}

bool MessageList::focusRow(int row, int step, Qt::FocusReason reason) {
    while (row >= 0 && row < m_rows.size() && m_rows.at(row).isEmpty())
        row += step;
    if (row < 0 || row >= m_rows.size())
        return false;
    MessageRow *widget = widgetOf(row);
    measure(row);
    placeWidgets();
    const int edge = step < 0 ? widget->height() : 0;
    reveal(widget, QRect(0, edge, 1, 1));
    widget->entry()->setFocus(reason);
    return true;
}

int MessageList::indexOf(const QUuid &id) const {
    // From the end, where the rows in sight mostly are.
    for (int row = int(m_rows.size()) - 1; row >= 0; --row) {
        if (m_rows.at(row).id == id)
            return row;
    }
    return -1;
}
