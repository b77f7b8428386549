#pragma once

#include "screens/LookButton.h"

/// A button with a word on it, or a few: they go over several lines where there is no room for one. There
/// is at most one loud one in a window.
class WordButton : public LookButton {
    Q_OBJECT

public:
    enum class Tone {
        quiet,
        loud,
        destructive, ///< what it does can't be undone
    };

    WordButton(const Look &look, const QString &word, Tone tone = Tone::quiet, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The widest that the button gets; longer words wrap.
    void setWidest(int width);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor fill() const;
    QColor ink() const;

    const Tone m_tone;
    int m_widest = QWIDGETSIZE_MAX;
};
