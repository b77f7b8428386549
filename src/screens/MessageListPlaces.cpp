/// The half of MessageList that knows where the rows are, and keeps the reader's place among them.

#include "screens/Look.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/RowEstimate.h"
#include "screens/Style.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

void MessageList::takeHeight(MessageRow *widget) {
    // What the person folds stays under the pointer, and the end goes where it must.
    m_glide.stop();
    m_unfolded.insert(widget->model().id);
    setOffset(laidAnew(indexOf(widget->model().id), widget));
    setFollowsEnd(offset() >= end());
    arrange();
}

int MessageList::laidAnew(int row, MessageRow *widget) {
    const int before = offset() - m_heights.top(row);
    m_heights.measure(row, widget->layIn(columnWidth()));
    return m_heights.top(row) + widget->placeNow(before);
}

void MessageList::glideToEnd(int before) {
    const bool grew = end() > before;
    if (!m_followsEnd || !grew || !isVisible() || m_look.motion() == Motion::reduced)
        return arrange();
    // The new rows are measured before the way to them is known.
    measureInSight(Hold::place);
    if (end() - offset() > viewport()->height())
        return arrange();
    placeWidgets();
    m_glide.go(offset(), end(), m_look.motion());
}

int MessageList::columnWidth() const {
    return std::min(style::columnWidth, width() - 2 * style::columnMargin) + 2 * style::rowOutset;
}

int MessageList::columnLeft() const {
    return (width() - columnWidth()) / 2;
}

int MessageList::end() const {
    return std::max(0, m_heights.total() - viewport()->height());
}

int MessageList::offset() const {
    return verticalScrollBar()->value();
}

QList<int> MessageList::estimates(const QList<MessageRowModel> &rows) const {
    QList<int> heights;
    heights.reserve(rows.size());
    for (const MessageRowModel &row : rows)
        heights.append(estimatedRowHeight(m_look, row, columnWidth()));
    return heights;
}

void MessageList::estimateAll() {
    const int top = m_heights.rowAt(offset());
    const double share =
        top < 0 ? 0 : double(offset() - m_heights.top(top)) / std::max(1, m_heights.height(top));
    m_heights.replace(0, m_heights.count(), estimates(m_rows));
    if (top < 0 || m_followsEnd)
        return;
    m_heights.measure(top, widgetOf(top)->layIn(columnWidth()));
    setOffset(m_heights.top(top) + int(share * m_heights.height(top)));
}

void MessageList::setOffset(int offset) {
    const QScopedValueRollback arranging(m_isArranging, true);
    QScrollBar *bar = verticalScrollBar();
    bar->setRange(0, end());
    bar->setPageStep(viewport()->height());
    bar->setValue(offset);
}

void MessageList::arrange() {
    renewRows();
    measureInSight(m_followsEnd && !m_glide.isUnderWay() ? Hold::end : Hold::place);
    placeWidgets();
}

void MessageList::renewRows() {
    const QRect sight = viewport()->rect();
    for (const QUuid &id : QSet(m_unfolded)) {
        const MessageRow *widget = m_widgets.value(id);
        const int row = indexOf(id);
        if (widget && (widget->isAncestorOf(window()->focusWidget()) ||
                       !widget->geometry().intersects(sight) || placeOf(row).intersects(sight)))
            continue;
        m_unfolded.remove(id);
        if (!widget)
            continue;
        delete m_widgets.take(id);
        m_heights.forget(row);
    }
}

QRect MessageList::placeOf(int row) const {
    const int top = m_heights.top(row) - offset() + qRound(m_arrival.value());
    return {columnLeft(), top, columnWidth(), m_heights.height(row)};
}

void MessageList::measureInSight(Hold hold) {
    bool changed = true;
    while (changed) {
        changed = false;
        setOffset(hold == Hold::end ? end() : offset());
        const int reach = viewport()->height();
        const int last = m_heights.rowAt(offset() + 2 * reach);
        for (int row = std::max(0, m_heights.rowAt(offset() - reach)); row <= last; ++row)
            changed |= measure(row);
    }
}

bool MessageList::measure(int row) {
    if (m_heights.isMeasured(row) && m_widgets.contains(m_rows.at(row).id))
        return false;
    const int before = m_heights.height(row);
    const int height = widgetOf(row)->layIn(columnWidth());
    const bool startsAbove = m_heights.top(row) < offset();
    m_heights.measure(row, height);
    // What the reader sees stays where it is when a guess above it turns out wrong.
    if (startsAbove && height != before)
        setOffset(offset() + height - before);
    return height != before;
}

void MessageList::placeWidgets() {
    const int reach = viewport()->height();
    for (auto it = m_widgets.begin(); it != m_widgets.end();) {
        MessageRow *widget = *it;
        const QRect place = placeOf(indexOf(it.key()));
        const bool isFar = place.bottom() < -reach || place.top() > 2 * reach;
        if (isFar && !widget->isAncestorOf(window()->focusWidget())) {
            it = m_widgets.erase(it);
            delete widget;
            continue;
        }
        widget->setGeometry(place);
        widget->show();
        ++it;
    }
    followPointer();
}

void MessageList::reveal(const MessageRow *row, const QRect &caret) {
    const QRect seen = caret.translated(row->pos());
    QScrollBar *bar = verticalScrollBar();
    if (seen.top() < style::listPadding)
        bar->setValue(bar->value() + seen.top() - style::listPadding);
    else if (seen.bottom() > viewport()->height() - style::listPadding)
        bar->setValue(bar->value() + seen.bottom() - viewport()->height() + style::listPadding);
}
