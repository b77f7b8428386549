#include "screens/ThemeSwatch.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int outset = style::swatchGap + style::focusRing;

} // namespace

ThemeSwatch::ThemeSwatch(const Look &look, Theme theme, QWidget *parent)
    : ChoiceButton(look, displayName(theme), parent),
      m_theme(theme) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ThemeSwatch::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::caption));
    const int width = std::max(style::swatchWidth + 2 * outset, metrics.horizontalAdvance(text()));
    const int height = style::swatchHeight + 2 * outset + style::spaceTiny + metrics.height();
    return {width + 2 * style::spaceTiny, height + 2 * style::spaceSmall};
}

QRectF ThemeSwatch::swatch() const {
    return QRectF((width() - style::swatchWidth) / 2, style::spaceSmall + outset, style::swatchWidth,
                  style::swatchHeight);
}

void ThemeSwatch::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &own = paletteOf(m_theme);
    const Palette &palette = look().palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(byState(Qt::transparent, palette.cardFill(), palette.quietFill()));
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
    painter.setBrush(own.swatch);
    painter.drawRoundedRect(swatch(), style::swatchRadius, style::swatchRadius);
    painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(swatch().adjusted(0.5, 0.5, -0.5, -0.5), style::swatchRadius,
                            style::swatchRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(own.accent);
    painter.drawEllipse(swatch().center(), style::swatchDot / 2.0, style::swatchDot / 2.0);
    if (isChecked()) {
        constexpr double away = style::swatchGap + style::focusRing / 2.0;
        painter.setPen(QPen(own.accent, style::focusRing));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(swatch().adjusted(-away, -away, away, away), style::swatchRadius + away,
                                style::swatchRadius + away);
    }
    painter.setFont(look().font(TextStyle::caption));
    painter.setPen(isChecked() ? palette.ink : palette.secondaryInk());
    const int top = int(swatch().bottom()) + outset + style::spaceTiny;
    painter.drawText(QRect(0, top, width(), height() - top), Qt::AlignHCenter | Qt::AlignTop, text());
    drawFocusRing(painter, rect(), style::radiusButton);
}
