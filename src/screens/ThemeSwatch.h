#pragma once

#include "records/Settings.h"
#include "screens/ChoiceButton.h"

/// A theme to choose: its colour with a dot of its accent in it, and its name underneath. The chosen one
/// has an outline in its accent.
class ThemeSwatch : public ChoiceButton {
    Q_OBJECT

public:
    ThemeSwatch(const Look &look, Theme theme, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The swatch itself, in this widget's coordinates.
    QRectF swatch() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Theme m_theme;
};
