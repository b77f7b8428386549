#include "screens/SegmentButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

namespace {
constexpr int radius = style::radiusButton - style::segmentInset;
}

SegmentButton::SegmentButton(const Look &look, const QString &word, QWidget *parent)
    : ChoiceButton(look, word, parent) {}

QSize SegmentButton::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::control));
    return {metrics.horizontalAdvance(text()) + 2 * style::segmentPadding,
            std::max(style::buttonHeight - 2 * style::segmentInset, metrics.height() + style::spaceTiny)};
}

void SegmentButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    const QColor rest = Qt::transparent;
    if (isChecked()) {
        painter.setPen(QPen(palette.edge(), style::hairline));
        painter.setBrush(palette.raisedFill());
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(byState(rest, palette.quietFill(), palette.livelyFill()));
        painter.drawRoundedRect(rect(), radius, radius);
    }
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(isChecked() ? palette.ink : palette.secondaryInk());
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), radius);
}
