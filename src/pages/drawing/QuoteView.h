#pragma once

#include "pages/drawing/BlockView.h"

/// A quotation in italics beside a bar.
class QuoteView : public BlockView {
public:
    explicit QuoteView(const DrawingTheme &theme);

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override { texts.push_back(&m_text); }
    void drawFigure(QPainter &painter, const QRectF &clip) const override;

private:
    TextPart m_text;
};
