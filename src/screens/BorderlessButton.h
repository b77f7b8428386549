#pragma once

#include "screens/LookButton.h"

/// A word that can be pressed, with nothing behind it. It leaves the arrow keys that lead up and down to
/// what it stands in.
class BorderlessButton : public LookButton {
    Q_OBJECT

public:
    using LookButton::LookButton;

    /// 0 to 1. At 0 it can still be reached by keys.
    void setOpacity(double opacity);

    /// The word's, with style::rowOutset on both sides for the ring.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    double m_opacity = 1;
};
