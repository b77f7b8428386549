#include "screens/QuietState.h"

#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>
#include <QVBoxLayout>

namespace {
constexpr double symbolOpacity = 0.3;
}

QuietState::QuietState(const Look &look, Icon icon, const QString &sentence, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_icon(icon),
      m_place(new QWidget(this)) {
    m_place->setFixedSize(style::quietSymbol, style::quietSymbol);
    auto *text = new Label(look, TextStyle::callout, Label::Ink::secondary, Label::Fit::wrapped, this);
    text->setText(sentence);
    text->setAlignment(Qt::AlignCenter);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(style::spaceWide);
    column->addStretch();
    column->addWidget(m_place, 0, Qt::AlignHCenter);
    column->addWidget(text);
    column->addStretch();
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void QuietState::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    drawIcon(painter, m_icon, m_place->geometry(), withOpacity(m_look.palette().ink, symbolOpacity));
}
