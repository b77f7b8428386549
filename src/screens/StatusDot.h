#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/MovingWidget.h"
#include "screens/StatusLamp.h"

/// The engine's lamp: a small round light whose colour tells how the engine is, with a soft halo that
/// swells while it wakes up.
class StatusDot : public MovingWidget, public Spoken {
    Q_OBJECT

public:
    explicit StatusDot(const Look &look, QWidget *parent = nullptr);

    void setLamp(const StatusLamp &lamp);
    QColor color() const;

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString spokenName() const override { return m_lamp.accessibleText; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    StatusLamp m_lamp;
};
