#pragma once

#include "screens/LookButton.h"

/// A round button with the first letter of a weekday, which is on or off.
class WeekdayButton : public LookButton {
    Q_OBJECT

public:
    /// `name` is the weekday's whole name. `look` must outlive this object.
    WeekdayButton(const Look &look, const QString &name, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor fill() const;
};
