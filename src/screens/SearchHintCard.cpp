#include "screens/SearchHintCard.h"

#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

SearchHintCard::SearchHintCard(const Look &look, QWidget *parent) : QWidget(parent), m_look(look) {
    auto *text = new Label(look, TextStyle::callout, Label::Ink::main, Label::Fit::wrapped, this);
    text->setText(u"Want Ostrelin to be able to search the web?"_s);
    auto *button = new WordButton(look, u"Turn on web search"_s, WordButton::Tone::quiet, this);
    button->setAccessibleDescription(text->text());
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(style::hintPadding, style::hintPadding, style::hintPadding, style::hintPadding);
    row->setSpacing(style::cardGap);
    row->addWidget(text, 1);
    row->addWidget(button);
    connect(button, &WordButton::clicked, this, &SearchHintCard::enabled);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void SearchHintCard::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = style::hairline / 2.0;
    painter.setPen(QPen(m_look.palette().accentEdge(), style::hairline));
    painter.setBrush(m_look.palette().askingFill());
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), style::radiusCard,
                            style::radiusCard);
}
