#pragma once

#include "screens/LookButton.h"
#include "screens/Style.h"

/// A suggestion of the empty chat: a card with a sentence on it, of a fixed width, as high as it needs.
class SuggestionButton : public LookButton {
    Q_OBJECT

public:
    SuggestionButton(const Look &look, const QString &text, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {style::suggestionMinimumWidth, style::buttonHeight}; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// Lays the sentence into lines of that width, draws it at `painter`'s origin if there is one, and
    /// gives its height.
    int layText(int width, QPainter *painter) const;
};
