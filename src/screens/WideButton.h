#pragma once

#include "screens/Icon.h"
#include "screens/LookButton.h"

/// A quiet button as wide as its place, with a symbol before its word.
class WideButton : public LookButton {
    Q_OBJECT

public:
    WideButton(const Look &look, Icon icon, const QString &word, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Icon m_icon;
};
