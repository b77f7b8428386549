#include "screens/SuggestionButton.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

SuggestionButton::SuggestionButton(const Look &look, const QString &text, QWidget *parent)
    : LookButton(look, text, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize SuggestionButton::sizeHint() const {
    return {style::suggestionWidth, layText(style::suggestionWidth - 2 * style::suggestionPadding, nullptr) +
                                        2 * style::suggestionPadding};
}

void SuggestionButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    const QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(palette.edge(), style::hairline));
    painter.setBrush(byState(palette.cardFill(), palette.livelyFill(), palette.pressedFill()));
    painter.drawRoundedRect(card, style::radiusCard, style::radiusCard);
    painter.save();
    painter.translate(style::suggestionPadding, style::suggestionPadding);
    painter.setPen(palette.ink);
    layText(width() - 2 * style::suggestionPadding, &painter);
    painter.restore();
    drawFocusRing(painter, rect(), style::radiusCard);
}

int SuggestionButton::layText(int width, QPainter *painter) const {
    QTextLayout layout(text(), look().font(TextStyle::callout));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const int spacing = lineSpacing(look().text().size);
    double height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height() + spacing;
    }
    layout.endLayout();
    if (painter)
        layout.draw(painter, {});
    return int(std::ceil(height)) - spacing;
}
