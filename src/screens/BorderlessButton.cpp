#include "screens/BorderlessButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

BorderlessButton::BorderlessButton(const Look &look, const QString &name, QWidget *parent, Tone tone)
    : RowButton(look, name, parent),
      m_tone(tone) {}

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
    const QColor rest = m_tone == Tone::action ? palette.linkInk() : palette.secondaryInk();
    painter.setPen(byState(rest, palette.ink, rest));
    painter.setFont(look().font(TextStyle::callout));
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), style::radiusMark);
}
