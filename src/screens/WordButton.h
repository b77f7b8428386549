#pragma once

#include "screens/LookButton.h"

/// A button with a word on it. There is at most one loud one in a window.
class WordButton : public LookButton {
    Q_OBJECT

public:
    enum class Tone { quiet, loud };

    WordButton(const Look &look, const QString &word, Tone tone = Tone::quiet, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Tone m_tone;
};
