#pragma once

#include "screens/RowButton.h"

/// A word that can be pressed, with nothing behind it.
class BorderlessButton : public RowButton {
    Q_OBJECT

public:
    /// `action` stands out from the text beside it, `quiet` stands back.
    enum class Tone { quiet, action };

    /// `look` must outlive this object.
    BorderlessButton(const Look &look, const QString &name, QWidget *parent = nullptr,
                     Tone tone = Tone::quiet);

    /// 0 to 1. At 0 it can still be reached by keys.
    void setOpacity(double opacity);

    /// The word's, with style::rowOutset on both sides for the ring.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Tone m_tone;
    double m_opacity = 1;
};
