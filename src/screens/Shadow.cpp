#include "screens/Shadow.h"

#include "screens/Style.h"

#include <QPainter>

void drawShadow(QPainter &painter, const QRectF &box, double radius, const QColor &step) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(step);
    // Faint boxes over each other, a little lower than the real one, add up to a soft shadow.
    for (int reach = style::shadowReach; reach > 0; --reach) {
        const QRectF around = box.adjusted(-reach, -reach, reach, reach).translated(0, style::shadowDrop);
        painter.drawRoundedRect(around, radius + reach, radius + reach);
    }
}
