#pragma once

#include "screens/Icon.h"
#include "screens/LookButton.h"

/// A symbol on a disc.
class RoundButton : public LookButton {
    Q_OBJECT

public:
    enum class Tone {
        loud,  ///< on the accent: the one loud thing in the chat
        quiet, ///< on a disc that stands over other things
    };

    /// `name` is the button's accessible name and its tool tip.
    RoundButton(const Look &look, Icon icon, const QString &name, Tone tone = Tone::loud,
                QWidget *parent = nullptr);

    Icon symbol() const { return m_icon; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &position) const override;

private:
    QRectF disc() const;

    const Icon m_icon;
    const Tone m_tone;
};
