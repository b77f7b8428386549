#pragma once

#include "screens/RowButton.h"

/// A button of a card in a row of a list, with a word or a few.
class CardButton : public RowButton {
    Q_OBJECT

public:
    using RowButton::RowButton;

    QSize sizeHint() const override;

protected:
    /// The second press of a double click was meant for the card before this one.
    void mouseDoubleClickEvent(QMouseEvent *) override {}
    void paintEvent(QPaintEvent *event) override;
};
