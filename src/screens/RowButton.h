#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/LookButton.h"

/// A button in a row of a list. A click leaves the focus where it is, and only the row leads the keyboard
/// here, so that the list stays one stop of the window; the arrow keys up and down are left to the row.
class RowButton : public LookButton, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    RowButton(const Look &look, const QString &name, QWidget *parent = nullptr);

    QAccessible::Role spokenRole() const override { return QAccessible::Button; }
    QString spokenName() const override { return text(); }

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
