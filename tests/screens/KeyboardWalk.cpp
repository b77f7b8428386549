#include "screens/KeyboardWalk.h"

#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/SpokenItemOf.h"

#include <QAbstractButton>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int most = 200; ///< more presses than any window has stops

QString nameOf(QAccessibleInterface *object) {
    return object ? u'"' + object->text(QAccessible::Name).left(60) + u'"' : u"nothing"_s;
}

/// What alone can be reached: the sheet that is open, or the window.
QAccessibleInterface *reachableRoot(QAccessibleInterface *object) {
    for (int index = 0; index < object->childCount(); ++index) {
        QAccessibleInterface *child = object->child(index);
        if (!child || child->state().invisible)
            continue;
        QAccessibleInterface *inner = reachableRoot(child);
        if (child->state().modal || inner != child)
            return inner;
    }
    return object;
}

/// The row of the messages that a widget belongs to; null for all others.
MessageRow *rowOf(QWidget *widget) {
    while (widget && !qobject_cast<MessageRow *>(widget))
        widget = widget->parentWidget();
    return static_cast<MessageRow *>(widget);
}

} // namespace

QStringList KeyboardWalk::faults() {
    goRound(Qt::Key_Tab);
    goRound(Qt::Key_Backtab);
    if (auto *list = m_window.findChild<MessageList *>(); list && list->isVisible())
        walkRows(*list);
    lookForUnreached(reachableRoot(QAccessible::queryAccessibleInterface(&m_window)));
    return m_faults;
}

void KeyboardWalk::goRound(Qt::Key key) {
    if (!step(key))
        return;
    const QAccessible::Id first = QAccessible::uniqueId(focusedPart());
    const QString name = nameOf(focusedPart());
    for (int presses = 0; presses < most; ++presses) {
        QAccessibleInterface *before = focusedPart();
        const QImage picture = m_window.grab().toImage();
        if (!step(key))
            return m_faults.append(
                u"%1 leads from %2 to nowhere"_s.arg(QKeySequence(key).toString(), nameOf(before)));
        const bool isBack = QAccessible::uniqueId(focusedPart()) == first;
        if (isBack && presses == 0)
            return;
        if (m_window.grab().toImage() == picture)
            m_faults.append(u"it isn't seen that the keyboard goes from %1 to %2"_s.arg(
                nameOf(before), nameOf(focusedPart())));
        if (isBack)
            return;
    }
    m_faults.append(u"%1 doesn't come back to %2"_s.arg(QKeySequence(key).toString(), name));
}

bool KeyboardWalk::step(Qt::Key key) {
    press(key);
    QAccessibleInterface *stop = focusedPart();
    if (!stop)
        return false;
    m_reached.insert(QAccessible::uniqueId(stop));
    pressByKeys(stop);
    return true;
}

void KeyboardWalk::pressByKeys(QAccessibleInterface *stop) {
    auto *button = qobject_cast<QAbstractButton *>(stop->object());
    if (!button)
        return;
    QTest::keyPress(button, Qt::Key_Space);
    if (!button->isDown())
        m_faults.append(u"Space doesn't press %1"_s.arg(nameOf(stop)));
    // What it does is for other tests.
    button->setDown(false);
    QTest::keyRelease(button, Qt::Key_Space);
}

void KeyboardWalk::walkRows(MessageList &list) {
    for (const MessageRow *row : list.findChildren<MessageRow *>()) {
        if (!row->entry())
            continue;
        walkRow(list, row, Qt::Key_Tab);
        walkRow(list, row, Qt::Key_Backtab);
    }
}

void KeyboardWalk::walkRow(MessageList &list, const QWidget *row, Qt::Key key) {
    if (!goTo(list, row))
        return m_faults.append(u"no key leads to a message"_s);
    for (int presses = 0; presses < most && rowOf(focused()) == row; ++presses)
        step(key);
}

bool KeyboardWalk::goTo(MessageList &list, const QWidget *row) {
    for (int presses = 0; presses < most && !list.isAncestorOf(focused()); ++presses)
        step(Qt::Key_Tab);
    // First down to the last row, and from there up.
    for (const auto &[jump, key] :
         {std::pair(Qt::Key_End, Qt::Key_Down), std::pair(Qt::Key_Home, Qt::Key_Up)}) {
        for (int presses = 0; presses < most && rowOf(focused()) != row; ++presses) {
            const QWidget *before = focused();
            press(jump, Qt::ControlModifier);
            press(key);
            if (focused() == before)
                break;
        }
    }
    return rowOf(focused()) == row;
}

void KeyboardWalk::lookForUnreached(QAccessibleInterface *object) {
    if (isControl(object) && !object->state().disabled && !isReached(object))
        m_faults.append(u"no key leads to %1"_s.arg(nameOf(object)));
    for (int index = 0; index < object->childCount(); ++index) {
        QAccessibleInterface *child = object->child(index);
        if (child && !child->state().invisible)
            lookForUnreached(child);
    }
}

bool KeyboardWalk::isReached(QAccessibleInterface *object) const {
    const auto isStop = [this](QAccessibleInterface *other) {
        return other && m_reached.contains(QAccessible::uniqueId(other));
    };
    QAccessibleInterface *parent = object->parent();
    if (isStop(object) || isStop(parent))
        return true;
    // The arrow keys lead on from one item or choice to the others beside it.
    const bool isOneOfSeveral =
        object->role() == QAccessible::ListItem || object->role() == QAccessible::RadioButton;
    if (!isOneOfSeveral || !parent)
        return false;
    for (int index = 0; index < parent->childCount(); ++index) {
        if (isStop(parent->child(index)))
            return true;
    }
    return false;
}

void KeyboardWalk::press(int key, Qt::KeyboardModifiers modifiers) {
    QWidget *target = focused() ? focused() : &m_window;
    QTest::keyClick(target, Qt::Key(key), key == Qt::Key_Backtab ? Qt::ShiftModifier : modifiers);
    QCoreApplication::processEvents();
}

QWidget *KeyboardWalk::focused() const {
    return m_window.focusWidget();
}

QAccessibleInterface *KeyboardWalk::focusedPart() const {
    QWidget *widget = focused();
    if (!widget || !widget->hasFocus())
        return nullptr;
    QAccessibleInterface *own = QAccessible::queryAccessibleInterface(widget);
    QAccessibleInterface *part = own->focusChild();
    return part ? part : own;
}
