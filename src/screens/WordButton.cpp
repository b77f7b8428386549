#include "screens/WordButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

WordButton::WordButton(const Look &look, const QString &word, Tone tone, QWidget *parent)
    : LookButton(look, word, parent),
      m_tone(tone) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize WordButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::control));
    const int height = std::max(style::buttonHeight, metrics.height() + 2 * style::spaceTiny);
    return {metrics.horizontalAdvance(text()) + 2 * style::buttonPadding, height};
}

void WordButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    const bool isLoud = m_tone == Tone::loud;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isLoud ? byState(palette.accent, palette.livelyAccent(), palette.pressedAccent())
                            : byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill()));
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(isLoud ? palette.onAccent() : palette.ink);
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), style::radiusButton);
}
