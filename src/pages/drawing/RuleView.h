#pragma once

#include "pages/drawing/BlockView.h"

/// A thin line from side to side.
class RuleView : public BlockView {
public:
    using BlockView::BlockView;

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &) override { return height(); }
    double arrange(double) override { return figure::hairline; }
    void drawFigure(QPainter &painter, const QRectF &clip) const override;
};
