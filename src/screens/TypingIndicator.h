#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/MovingWidget.h"

/// Three dots that breathe while a reply is being written. They stand still where motion is reduced.
class TypingIndicator : public MovingWidget, public Spoken {
    Q_OBJECT

public:
    explicit TypingIndicator(const Look &look, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString spokenName() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
