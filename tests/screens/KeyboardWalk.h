#pragma once

#include <QAccessible>
#include <QSet>
#include <QWidget>

class MessageList;

/// Goes through a window by keys alone, and tells what breaks the rules that hold in every window:
///
/// - Tab goes round and comes back, and so does Shift+Tab.
/// - Where the keyboard is can be seen.
/// - Every control is reached: by one of the two, or by the arrow keys from where they lead.
/// - Space presses every button that is reached.
class KeyboardWalk {
public:
    /// The window must be active.
    explicit KeyboardWalk(QWidget &window) : m_window(window) {}

    /// A sentence for each fault; nothing where all is well.
    QStringList faults();

private:
    void goRound(Qt::Key key);
    bool step(Qt::Key key);
    void pressByKeys(QAccessibleInterface *stop);
    void walkRows(MessageList &list);
    void walkRow(MessageList &list, const QWidget *row, Qt::Key key);
    bool goTo(MessageList &list, const QWidget *row);
    void lookForUnreached(QAccessibleInterface *object);
    bool isReached(QAccessibleInterface *object) const;

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QWidget *focused() const;
    QAccessibleInterface *focusedPart() const;

    QWidget &m_window;
    QSet<QAccessible::Id> m_reached;
    QStringList m_faults;
};
