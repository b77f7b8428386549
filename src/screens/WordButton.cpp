#include "screens/WordButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

namespace {
constexpr int wrapping = Qt::AlignCenter | Qt::TextWordWrap;
}

WordButton::WordButton(const Look &look, const QString &word, Tone tone, QWidget *parent)
    : LookButton(look, word, parent),
      m_tone(tone) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize WordButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::control));
    const QRect room(0, 0, m_widest - 2 * style::buttonPadding, QWIDGETSIZE_MAX);
    const QSize words = metrics.boundingRect(room, wrapping, text()).size();
    const int width = std::min(metrics.horizontalAdvance(text()), words.width());
    return {width + 2 * style::buttonPadding,
            std::max(style::buttonHeight, words.height() + 2 * style::spaceTiny)};
}

void WordButton::setWidest(int width) {
    m_widest = width;
    updateGeometry();
}

void WordButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill());
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(ink());
    const bool fits = QFontMetrics(painter.font()).horizontalAdvance(text()) <= width();
    painter.drawText(rect(), fits ? int(Qt::AlignCenter) : wrapping, text());
    drawFocusRing(painter, rect(), style::radiusButton);
}

QColor WordButton::fill() const {
    const Palette &palette = look().palette();
    if (!isEnabled())
        return palette.quietFill();
    switch (m_tone) {
    case Tone::quiet:
        return byState(palette.quietFill(), palette.livelyFill(), palette.pressedFill());
    case Tone::loud:
        return byState(palette.accent, palette.livelyAccent(), palette.pressedAccent());
    case Tone::destructive:
        return byState(palette.destructiveFill(), palette.livelyDestructiveFill(),
                       palette.pressedDestructiveFill());
    }
    Q_UNREACHABLE();
}

QColor WordButton::ink() const {
    if (!isEnabled())
        return look().palette().secondaryInk();
    switch (m_tone) {
    case Tone::quiet:
        return look().palette().ink;
    case Tone::loud:
        return look().palette().onAccent();
    case Tone::destructive:
        return look().palette().destructiveInk();
    }
    Q_UNREACHABLE();
}
