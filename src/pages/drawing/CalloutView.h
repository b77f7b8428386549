#pragma once

#include "pages/drawing/BlockView.h"

/// A text that stands out: a bar beside it, and above it a word that says why.
class CalloutView : public BlockView {
public:
    explicit CalloutView(const DrawingTheme &theme);

    SpokenPart spoken() const override;

private:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void listTexts(TextParts &texts) const override { texts.insert(texts.end(), {&m_caption, &m_text}); }
    void drawFigure(QPainter &painter, const QRectF &clip) const override;

    TextPart m_caption;
    TextPart m_text;
    QColor m_barColor;
};
