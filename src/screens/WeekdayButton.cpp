#include "screens/WeekdayButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

WeekdayButton::WeekdayButton(const Look &look, const QString &name, QWidget *parent)
    : LookButton(look, name.left(1), parent) {
    setAccessibleName(name);
    setToolTip(name);
    setCheckable(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize WeekdayButton::sizeHint() const {
    return {style::weekdayButton, style::weekdayButton};
}

void WeekdayButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill());
    // Apart from the ring of the keyboard, which has the same colour.
    constexpr int ringRoom = style::focusRing + style::focusGap;
    painter.drawEllipse(rect().adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom));
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(isChecked() ? look().palette().onAccent() : look().palette().ink);
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), height() / 2.0);
}

QColor WeekdayButton::fill() const {
    const Palette &palette = look().palette();
    return isChecked() ? byState(palette.accent, palette.livelyAccent(), palette.pressedAccent())
                       : byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill());
}
