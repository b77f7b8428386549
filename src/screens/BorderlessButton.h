#pragma once

#include "screens/RowButton.h"

/// A word that can be pressed, with nothing behind it.
class BorderlessButton : public RowButton {
    Q_OBJECT

public:
    using RowButton::RowButton;

    /// 0 to 1. At 0 it can still be reached by keys.
    void setOpacity(double opacity);

    /// The word's, with style::rowOutset on both sides for the ring.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_opacity = 1;
};
