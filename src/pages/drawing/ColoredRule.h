#pragma once

#include "pages/drawing/BlockView.h"

/// What separates: a short bar in the colour that the block names, with clear space around it.
class ColoredRule : public BlockView {
public:
    using BlockView::BlockView;

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    double arrange(double width) override;
    void drawFigure(QPainter &painter, const QRectF &clip) const override;

private:
    QColor m_color;
};
