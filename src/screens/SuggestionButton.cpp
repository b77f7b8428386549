#include "screens/SuggestionButton.h"

#include "screens/Look.h"

#include <QPainter>
#include <QTextLayout>

#include <cmath>

SuggestionButton::SuggestionButton(const Look &look, const QString &text, QWidget *parent)
    : LookButton(look, text, parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMaximumWidth(style::suggestionWidth);
}

QSize SuggestionButton::sizeHint() const {
    return {style::suggestionWidth, heightForWidth(style::suggestionWidth)};
}

int SuggestionButton::heightForWidth(int width) const {
    constexpr int padding = 2 * style::suggestionPadding;
    return layText(width - padding, nullptr) + padding;
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
