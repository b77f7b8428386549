#include "screens/RoundButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

namespace {
constexpr int ringRoom = style::focusRing + style::focusGap;
constexpr double livelyShare = 0.08;
} // namespace

RoundButton::RoundButton(const Look &look, Icon icon, const QString &name, Tone tone, QWidget *parent)
    : LookButton(look, {}, parent),
      m_icon(icon),
      m_tone(tone) {
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
    if (m_tone == Tone::loud) {
        painter.setBrush(byState(palette.accent, palette.livelyAccent(), palette.pressedAccent()));
    } else {
        const QColor lively = mixed(palette.surface, palette.ink, livelyShare);
        painter.setBrush(byState(palette.surface, lively, lively));
        painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    }
    painter.drawEllipse(disc());
    QRectF symbol(0, 0, style::iconSize, style::iconSize);
    symbol.moveCenter(disc().center());
    drawIcon(painter, m_icon, symbol, m_tone == Tone::loud ? palette.onAccent() : palette.ink);
    drawFocusRing(painter, rect(), width() / 2.0);
}

bool RoundButton::hitButton(const QPoint &position) const {
    const QPointF away = position - disc().center();
    return QPointF::dotProduct(away, away) <= width() * width() / 4.0;
}

QRectF RoundButton::disc() const {
    return QRectF(rect()).adjusted(ringRoom, ringRoom, -ringRoom, -ringRoom);
}
