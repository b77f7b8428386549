#include "screens/SymbolButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

SymbolButton::SymbolButton(const Look &look, Icon icon, const QString &name, QWidget *parent)
    : LookButton(look, {}, parent),
      m_icon(icon) {
    setAccessibleName(name);
    setToolTip(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolButton::sizeHint() const {
    return {style::roundButton, style::roundButton};
}

void SymbolButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(byState(Qt::transparent, palette.quietFill(), palette.pressedFill()));
    painter.drawEllipse(rect());
    QRectF symbol(0, 0, style::iconSize, style::iconSize);
    symbol.moveCenter(QRectF(rect()).center());
    drawIcon(painter, m_icon, symbol, palette.ink);
    drawFocusRing(painter, rect(), height() / 2.0);
}
