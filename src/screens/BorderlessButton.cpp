#include "screens/BorderlessButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

void BorderlessButton::setOpacity(double opacity) {
    m_opacity = opacity;
    update();
}

QSize BorderlessButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::callout));
    return {metrics.horizontalAdvance(text()) + 2 * style::rowOutset, style::footHeight};
}

void BorderlessButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    const Palette &palette = look().palette();
    painter.setPen(byState(palette.secondaryInk(), palette.ink, palette.secondaryInk()));
    painter.setFont(look().font(TextStyle::callout));
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), style::radiusMark);
}
