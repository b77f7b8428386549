#pragma once

#include "pages/drawing/Focus.h"

#include <QPushButton>

class Look;

/// What all buttons of the windows share: they take their colours from the look, answer to Return as
/// well as to Space, and show a ring while the keyboard's focus is on them.
class LookButton : public QPushButton {
    Q_OBJECT

public:
    /// `look` must outlive this object. `name` is what the button is called, on screen or aloud.
    LookButton(const Look &look, const QString &name, QWidget *parent = nullptr);

    /// Calls the button something else, on screen and aloud.
    void setName(const QString &name);

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_keyFocus.isByKey() && hasFocus(); }

Q_SIGNALS:
    /// The focus has come or gone.
    void focusChanged();

protected:
    const Look &look() const { return m_look; }

    /// One of three colours, for a button at rest, under the pointer, and pressed.
    QColor byState(const QColor &rest, const QColor &hovered, const QColor &pressed) const;

    /// The ring, just inside `area`.
    void drawFocusRing(QPainter &painter, const QRectF &area, double radius) const;

    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    const Look &m_look;
    KeyFocus m_keyFocus;
};
