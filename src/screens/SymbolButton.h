#pragma once

#include "screens/Icon.h"
#include "screens/LookButton.h"

/// A symbol on a round ground that shows only under the pointer.
class SymbolButton : public LookButton {
    Q_OBJECT

public:
    /// `name` is the button's accessible name and its tool tip.
    SymbolButton(const Look &look, Icon icon, const QString &name, QWidget *parent = nullptr);

    Icon symbol() const { return m_icon; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Icon m_icon;
};
