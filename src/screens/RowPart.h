#pragma once

#include "pages/drawing/SelectableWidget.h"

class LookButton;

/// A part of a message's row. The row arranges it, and leads the keyboard to it and through it.
class RowPart : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Arranges the part in that width, and gives the height that it takes there.
    virtual int layIn(int width) = 0;

    /// Where the keyboard can go in it, in order: texts and buttons of the kind that rows have.
    virtual QList<QWidget *> stops() const = 0;

Q_SIGNALS:
    /// layIn() gives another height than before.
    void heightChanged();
    /// The focus has come to one of the stops, or gone.
    void focusChanged();
    /// The person wants to go on to the row before or after.
    void left(SelectableWidget::Edge edge);
};
