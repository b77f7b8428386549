#include "screens/RoundButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

namespace {
constexpr int ringRoom = style::focusRing + style::focusGap;
}

RoundButton::RoundButton(const Look &look, Icon icon, const QString &name, QWidget *parent)
    : LookButton(look, {}, parent),
      m_icon(icon) {
    setAccessibleName(name);
    setToolTip(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize RoundButton::sizeHint() const {
    constexpr int side = style::roundButton + 2 * ringRoom;
    return {side, side};
}

void RoundButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(byState(palette.accent, palette.livelyAccent(), palette.pressedAccent()));
    painter.drawEllipse(disc());
    QRectF symbol(0, 0, style::iconSize, style::iconSize);
    symbol.moveCenter(disc().center());
    drawIcon(painter, m_icon, symbol, palette.onAccent());
    drawFocusRing(painter, rect(), width() / 2.0);
}

bool RoundButton::hitButton(const QPoint &position) const {
    const QPointF away = position - disc().center();
    return QPointF::dotProduct(away, away) <= width() * width() / 4.0;
}

QRectF RoundButton::disc() const {
    return QRectF(rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
}
