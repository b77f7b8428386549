#include "pages/drawing/RuleView.h"

#include "pages/drawing/Fill.h"

void RuleView::drawFigure(QPainter &painter, const QRectF &) const {
    fill(painter, QRectF(0, 0, width(), figure::hairline), theme().shade(figure::hairlineOpacity));
}

SpokenPart RuleView::spoken() const {
    return {.role = QAccessible::Separator, .area = QRectF(0, 0, width(), height())};
}
