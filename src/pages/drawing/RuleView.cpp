#include "pages/drawing/RuleView.h"

#include <QPainter>

void RuleView::drawFigure(QPainter &painter, const QRectF &) const {
    painter.fillRect(QRectF(0, 0, width(), figure::hairline), theme().shade(figure::hairlineOpacity));
}

SpokenPart RuleView::spoken() const {
    return {.role = QAccessible::Separator, .area = QRectF(0, 0, width(), height())};
}
