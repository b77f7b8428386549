#include "screens/ChatBar.h"

#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/ShownTitle.h"
#include "screens/StatusDot.h"
#include "screens/Style.h"
#include "screens/SymbolButton.h"

#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

ChatBar::ChatBar(const Look &look, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_title(new Label(look, TextStyle::title, Label::Ink::main, Label::Fit::elided, this)),
      m_dot(new StatusDot(look, this)) {
    setFixedHeight(style::barHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(style::barPadding, 0, style::barPadding - style::spaceTiny, style::hairline);
    row->setSpacing(style::spaceWide);
    row->addWidget(m_title, 1);
    auto *pages = new SymbolButton(look, Icon::richPage, u"Pages"_s, this);
    row->addWidget(pages);
    row->addWidget(m_dot);
    connect(pages, &SymbolButton::clicked, this, &ChatBar::pagesRequested);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void ChatBar::setTitle(const QString &title) {
    m_title->setText(shownTitle(title));
}

void ChatBar::setLamp(const StatusLamp &lamp) {
    m_dot->setLamp(lamp);
}

void ChatBar::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(0, height() - style::hairline, width(), style::hairline, m_look.palette().hairline);
}
