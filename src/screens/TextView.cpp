#include "screens/TextView.h"

#include "pages/drawing/Focus.h"
#include "screens/Look.h"

#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QStyleHints>
#include <QTimerEvent>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int dragTick = 40;

struct MoveKey {
    QKeySequence::StandardKey move;
    QKeySequence::StandardKey select;
    TextFlow::Move by;
};

constexpr std::array moveKeys = {
    MoveKey{QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, TextFlow::Move::nextCharacter},
    MoveKey{QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar,
            TextFlow::Move::previousCharacter},
    MoveKey{QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, TextFlow::Move::nextWord},
    MoveKey{QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, TextFlow::Move::previousWord},
    MoveKey{QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, TextFlow::Move::lineStart},
    MoveKey{QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, TextFlow::Move::lineEnd},
    MoveKey{QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, TextFlow::Move::lineUp},
    MoveKey{QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, TextFlow::Move::lineDown},
    MoveKey{QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument,
            TextFlow::Move::textStart},
    MoveKey{QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, TextFlow::Move::textEnd},
};

/// True if a focus that goes for this reason comes back at once.
bool isPassing(Qt::FocusReason reason) {
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

} // namespace

TextView::TextView(const Look &look, const Style &style, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_style(style) {
    Spoken::install();
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setCursor(Qt::IBeamCursor);
    setFocusPolicy(Qt::ClickFocus);
    // What stays the same at the top isn't painted again when the text grows.
    setAttribute(Qt::WA_StaticContents);
    connect(&look, &Look::changed, this, &TextView::takeLook);
    takeLook();
}

void TextView::setText(const QString &text) {
    if (m_flow.text().isSharedWith(text))
        return;
    const auto before = m_flow.height();
    const double changedFrom = m_flow.setText(text);
    const int length = int(text.size());
    m_selection = {std::min(m_selection.anchor, length), std::min(m_selection.caret, length)};
    const auto bottom = std::max(before, m_flow.height());
    update(0, int(changedFrom), width(), int(std::ceil(bottom - changedFrom)) + 1);
    updateGeometry();
    if (QAccessible::isActive()) {
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

int TextView::layIn(int width) {
    m_flow.setWidth(width);
    return int(std::ceil(m_flow.height()));
}

int TextView::usedWidth() const {
    return int(std::ceil(m_flow.usedWidth()));
}

QString TextView::selectedText() const {
    return text().mid(m_selection.start(), m_selection.end() - m_selection.start());
}

void TextView::selectAll() {
    select({0, int(text().size())});
}

void TextView::copy() const {
    if (!m_selection.isEmpty())
        QGuiApplication::clipboard()->setText(selectedText());
}

QSize TextView::sizeHint() const {
    return {usedWidth(), int(std::ceil(m_flow.height()))};
}

int TextView::heightForWidth(int width) const {
    // A layout asks for many widths, and may then leave the widget as it is.
    const double before = m_flow.width();
    m_flow.setWidth(width);
    const double height = m_flow.height();
    m_flow.setWidth(before);
    return int(std::ceil(height));
}

void TextView::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const Palette &palette = m_look.palette();
    const bool isOnAccent = m_style.ground == Ground::accent;
    const QColor plain = m_style.ink == Ink::main ? palette.ink : palette.secondaryInk();
    painter.setPen(isOnAccent ? palette.onAccent() : plain);
    m_flow.draw(painter, event->rect(), m_selection,
                isOnAccent ? palette.selectionOnAccent() : palette.selection());
    if (showsFocus())
        painter.fillRect(m_flow.caretAt(m_selection.caret), painter.pen().color());
}

void TextView::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    const int position = m_flow.positionAt(event->position());
    if (isTripleClick(*event))
        return select(m_flow.paragraphAt(position));
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    m_isDragging = true;
    m_dragTicker.start(dragTick, this);
    select({extends ? m_selection.anchor : position, position});
}

void TextView::mouseMoveEvent(QMouseEvent *event) {
    if (m_isDragging)
        dragTo(event->position());
}

void TextView::mouseReleaseEvent(QMouseEvent *) {
    m_isDragging = false;
    m_dragTicker.stop();
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (!m_selection.isEmpty() && clipboard->supportsSelection())
        clipboard->setText(selectedText(), QClipboard::Selection);
}

void TextView::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_doubleClickTime = event->timestamp();
    select(m_flow.wordAt(m_flow.positionAt(event->position())));
}

bool TextView::isTripleClick(const QMouseEvent &event) const {
    const auto interval = ulong(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    return m_doubleClickTime != 0 && event.timestamp() - m_doubleClickTime < interval;
}

void TextView::timerEvent(QTimerEvent *event) {
    // The text may be longer than what is seen: it scrolls on while the pointer rests outside.
    if (event->timerId() != m_dragTicker.timerId())
        return QWidget::timerEvent(event);
    const QPointF point = mapFromGlobal(QPointF(QCursor::pos()));
    if (!visibleRegion().contains(point.toPoint()))
        dragTo(point);
}

void TextView::dragTo(const QPointF &point) {
    select({m_selection.anchor, m_flow.positionAt(point)});
    Q_EMIT caretMoved(m_flow.caretAt(m_selection.caret).toAlignedRect());
}

void TextView::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy))
        return copy();
    if (event->matches(QKeySequence::SelectAll))
        return selectAll();
    if (!moveCaret(*event))
        QWidget::keyPressEvent(event);
}

bool TextView::moveCaret(const QKeyEvent &event) {
    for (const MoveKey &key : moveKeys) {
        const bool selects = event.matches(key.select);
        if (!selects && !event.matches(key.move))
            continue;
        const int caret = m_flow.moved(m_selection.caret, key.by);
        const bool stays = caret == m_selection.caret && !selects;
        if (stays && key.by == TextFlow::Move::lineUp)
            Q_EMIT left(Edge::top);
        else if (stays && key.by == TextFlow::Move::lineDown)
            Q_EMIT left(Edge::bottom);
        if (!hasFocus())
            return true;
        m_showsFocus = true;
        select({selects ? m_selection.anchor : caret, caret});
        Q_EMIT focusChanged();
        Q_EMIT caretMoved(m_flow.caretAt(caret).toAlignedRect());
        return true;
    }
    return false;
}

void TextView::focusInEvent(QFocusEvent *event) {
    if (!isPassing(event->reason()))
        m_showsFocus = isKeyboardReason(event->reason());
    update();
    Q_EMIT focusChanged();
}

void TextView::focusOutEvent(QFocusEvent *event) {
    if (!isPassing(event->reason()))
        select({m_selection.caret, m_selection.caret});
    update();
    Q_EMIT focusChanged();
}

void TextView::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *copyAction = menu->addAction(u"Copy"_s, this, &TextView::copy);
    copyAction->setEnabled(!m_selection.isEmpty());
    menu->addAction(u"Select All"_s, this, &TextView::selectAll);
    menu->popup(event->globalPos());
}

void TextView::resizeEvent(QResizeEvent *) {
    m_flow.setWidth(width());
}

void TextView::takeLook() {
    m_flow.setFormat(m_look.font(m_style.text), lineSpacing(m_look.text().size), m_style.alignment);
    updateGeometry();
    update();
}

void TextView::select(const TextSelection &selection) {
    if (m_selection == selection)
        return;
    m_selection = selection;
    update();
}
