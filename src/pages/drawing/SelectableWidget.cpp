#include "pages/drawing/SelectableWidget.h"

#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QStyleHints>
#include <QTimerEvent>

#include <array>

using namespace Qt::StringLiterals;

namespace {

using Move = SelectableText::Move;

constexpr int dragTick = 40;

struct MoveKey {
    QKeySequence::StandardKey move;
    QKeySequence::StandardKey select;
    Move by;
};

constexpr std::array moveKeys = {
    MoveKey{QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, Move::nextCharacter},
    MoveKey{QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, Move::previousCharacter},
    MoveKey{QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, Move::nextWord},
    MoveKey{QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, Move::previousWord},
    MoveKey{QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, Move::lineStart},
    MoveKey{QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, Move::lineEnd},
    MoveKey{QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, Move::lineUp},
    MoveKey{QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, Move::lineDown},
    MoveKey{QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument, Move::textStart},
    MoveKey{QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, Move::textEnd},
};

} // namespace

SelectableWidget::SelectableWidget(QWidget *parent) : QWidget(parent) {
    setCursor(Qt::IBeamCursor);
    setFocusPolicy(Qt::ClickFocus);
    // What stays the same at the top isn't painted again when the text grows.
    setAttribute(Qt::WA_StaticContents);
}

QString SelectableWidget::selectedText() const {
    return content().textBetween(m_selection.start(), m_selection.end());
}

void SelectableWidget::selectAll() {
    select({0, content().length()});
}

void SelectableWidget::copy() const {
    if (!m_selection.isEmpty())
        QGuiApplication::clipboard()->setText(selectedText());
}

void SelectableWidget::select(const TextSelection &selection) {
    if (m_selection == selection)
        return;
    m_selection = selection;
    update();
}

void SelectableWidget::keepSelectionInside() {
    const int length = content().length();
    m_selection = {std::min(m_selection.anchor, length), std::min(m_selection.caret, length)};
}

void SelectableWidget::showFocus() {
    m_keyFocus.takeKey();
    update();
    Q_EMIT focusChanged();
}

void SelectableWidget::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    const int position = content().positionAt(event->position());
    if (isTripleClick(*event))
        return select(content().paragraphAt(position));
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    m_isDragging = true;
    m_dragTicker.start(dragTick, this);
    select({extends ? m_selection.anchor : position, position});
}

void SelectableWidget::mouseMoveEvent(QMouseEvent *event) {
    if (m_isDragging)
        dragTo(event->position());
}

void SelectableWidget::mouseReleaseEvent(QMouseEvent *) {
    m_isDragging = false;
    m_dragTicker.stop();
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!m_selection.isEmpty() && clipboard->supportsSelection())
        clipboard->setText(selectedText(), QClipboard::Selection);
}

void SelectableWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_doubleClickTime = event->timestamp();
    select(content().wordAt(content().positionAt(event->position())));
}

bool SelectableWidget::isTripleClick(const QMouseEvent &event) const {
    const auto interval = ulong(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    return m_doubleClickTime != 0 && event.timestamp() - m_doubleClickTime < interval;
}

void SelectableWidget::timerEvent(QTimerEvent *event) {
    // The text may be longer than what is seen: it scrolls on while the pointer rests outside.
    if (event->timerId() != m_dragTicker.timerId())
        return QWidget::timerEvent(event);
    const QPointF point = mapFromGlobal(QPointF(QCursor::pos()));
    if (!visibleRegion().contains(point.toPoint()))
        dragTo(point);
}

void SelectableWidget::dragTo(const QPointF &point) {
    select({m_selection.anchor, content().positionAt(point)});
    Q_EMIT caretMoved(content().caretAt(m_selection.caret).toAlignedRect());
}

void SelectableWidget::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy))
        return copy();
    if (event->matches(QKeySequence::SelectAll))
        return selectAll();
    if (opensMenu(*event))
        return openMenu(content().caretAt(m_selection.caret).bottomLeft().toPoint());
    if (!moveCaret(*event))
        QWidget::keyPressEvent(event);
}

bool SelectableWidget::moveCaret(const QKeyEvent &event) {
    for (const MoveKey &key : moveKeys) {
        const bool selects = event.matches(key.select);
        if (!selects && !event.matches(key.move))
            continue;
        const int caret = content().moved(m_selection.caret, key.by);
        const bool stays = caret == m_selection.caret && !selects;
        if (stays && key.by == Move::lineUp)
            Q_EMIT left(Edge::top);
        else if (stays && key.by == Move::lineDown)
            Q_EMIT left(Edge::bottom);
        if (!hasFocus())
            return true;
        select({selects ? m_selection.anchor : caret, caret});
        showFocus();
        Q_EMIT caretMoved(content().caretAt(caret).toAlignedRect());
        return true;
    }
    return false;
}

void SelectableWidget::focusInEvent(QFocusEvent *event) {
    m_keyFocus.take(event->reason());
    update();
    Q_EMIT focusChanged();
}

void SelectableWidget::focusOutEvent(QFocusEvent *event) {
    if (!isPassing(event->reason()))
        select({m_selection.caret, m_selection.caret});
    update();
    Q_EMIT focusChanged();
}

void SelectableWidget::contextMenuEvent(QContextMenuEvent *event) {
    openMenu(event->pos());
}

void SelectableWidget::openMenu(const QPoint &place) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillMenu(*menu, place);
    menu->popup(mapToGlobal(place));
}

void SelectableWidget::fillMenu(QMenu &menu, const QPoint &) {
    QAction *copyAction = menu.addAction(u"Copy"_s, this, &SelectableWidget::copy);
    copyAction->setEnabled(!m_selection.isEmpty());
    menu.addAction(u"Select All"_s, this, &SelectableWidget::selectAll);
}
