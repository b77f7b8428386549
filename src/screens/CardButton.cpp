#include "screens/CardButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

QSize CardButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::control));
    return {metrics.horizontalAdvance(text()) + 2 * style::buttonPadding,
            std::max(style::buttonHeight, metrics.height() + 2 * style::spaceTiny)};
}

void CardButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill()));
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(palette.ink);
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), style::radiusButton);
}
