#include "screens/TypingIndicator.h"

#include "screens/Look.h"
#include "screens/TypingMotion.h"

#include <QPainter>

using namespace Qt::StringLiterals;

TypingIndicator::TypingIndicator(const Look &look, QWidget *parent) : MovingWidget(look, parent) {
    Spoken::install();
    setHasMotion(true);
}

QSize TypingIndicator::sizeHint() const {
    constexpr int gaps = style::typingDots - 1;
    return {style::typingDots * style::typingDot + gaps * style::typingGap, style::typingDot};
}

QString TypingIndicator::spokenName() const {
    return u"Ostrelin is answering"_s;
}

void TypingIndicator::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Palette &palette = look().palette();
    const bool moves = look().motion() == Motion::full;
    const auto time = motionTime();
    for (int dot = 0; dot < style::typingDots; ++dot) {
        const double radius = style::typingDot / 2.0 * (moves ? typing::scaleAt(time, dot) : 1);
        const QPointF centre(dot * (style::typingDot + style::typingGap) + style::typingDot / 2.0,
                             height() / 2.0);
        painter.setBrush(mixed(palette.secondaryInk(), palette.accent, typing::accentShareAt(time, dot)));
        painter.drawEllipse(centre, radius, radius);
    }
}
