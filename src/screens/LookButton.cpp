#include "screens/LookButton.h"

#include "screens/Look.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

LookButton::LookButton(const Look &look, const QString &name, QWidget *parent)
    : QPushButton(name, parent),
      m_look(look) {
    setAccessibleName(name);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    connect(&look, &Look::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void LookButton::setName(const QString &name) {
    if (text() == name)
        return;
    setText(name);
    setAccessibleName(name);
    updateGeometry();
}

QColor LookButton::byState(const QColor &rest, const QColor &hovered, const QColor &pressed) const {
    if (isDown())
        return pressed;
    return underMouse() && isEnabled() ? hovered : rest;
}

void LookButton::drawFocusRing(QPainter &painter, const QRectF &area, double radius) const {
    if (showsFocus())
        drawRing(painter, area, radius, m_look.palette().accent);
}

void LookButton::focusInEvent(QFocusEvent *event) {
    // A window that comes to the front again gives the focus back, and says nothing of keys; so does a menu.
    m_keyFocus.take(event->reason());
    QPushButton::focusInEvent(event);
    Q_EMIT focusChanged();
}

void LookButton::focusOutEvent(QFocusEvent *event) {
    QPushButton::focusOutEvent(event);
    Q_EMIT focusChanged();
}

void LookButton::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QPushButton::keyPressEvent(event);
}
