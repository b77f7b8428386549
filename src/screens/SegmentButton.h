#pragma once

#include "screens/ChoiceButton.h"

/// One word of a SegmentedPicker.
class SegmentButton : public ChoiceButton {
    Q_OBJECT

public:
    SegmentButton(const Look &look, const QString &word, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};
