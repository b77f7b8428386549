#include "screens/RowButton.h"

#include <QKeyEvent>

RowButton::RowButton(const Look &look, const QString &name, QWidget *parent)
    : LookButton(look, name, parent) {
    Spoken::install();
    setFocusPolicy(Qt::NoFocus);
}

void RowButton::focusInEvent(QFocusEvent *event) {
    // A widget that doesn't take the focus at all has no place in the window's chain to go on from.
    setFocusPolicy(Qt::ClickFocus);
    LookButton::focusInEvent(event);
}

void RowButton::focusOutEvent(QFocusEvent *event) {
    LookButton::focusOutEvent(event);
    setFocusPolicy(Qt::NoFocus);
}

void RowButton::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        event->ignore();
    else
        LookButton::keyPressEvent(event);
}
