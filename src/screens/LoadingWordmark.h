#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/MovingWidget.h"

/// The program's name. It fills with the colours of the sun from the left as a download goes on, and a
/// white shine runs across it while the engine wakes up; not so where motion is reduced.
class LoadingWordmark : public MovingWidget, public Spoken {
    Q_OBJECT

public:
    explicit LoadingWordmark(const Look &look, QWidget *parent = nullptr);

    /// How much of the name is filled, 0 to 1.
    void setFilling(double filling);
    double filling() const { return m_filling; }

    void setWaking(bool isWaking);
    bool isWaking() const { return m_isWaking; }

    QSize sizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::StaticText; }
    QString spokenName() const override;

    /// Where the middle of the shine is after that time, in widths of the name: it comes in from the left
    /// of 0 and leaves to the right of 1.
    static double shineAt(std::chrono::milliseconds time);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawShine(QPainter &painter, const QPointF &origin, double width) const;

    double m_filling = 0;
    bool m_isWaking = false;
};
