#pragma once

#include "screens/Icon.h"
#include "screens/LookButton.h"

/// A symbol on a disc of the accent: the one loud thing in the chat.
class RoundButton : public LookButton {
    Q_OBJECT

public:
    /// `name` is the button's accessible name and its tool tip.
    RoundButton(const Look &look, Icon icon, const QString &name, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &position) const override;

private:
    QRectF disc() const;

    const Icon m_icon;
};
