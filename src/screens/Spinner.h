#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/MovingWidget.h"

/// A small turning arc in the program's amber: something is under way. It stands still where motion is
/// reduced.
class Spinner : public MovingWidget, public Spoken {
    Q_OBJECT

public:
    explicit Spinner(const Look &look, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString spokenName() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
