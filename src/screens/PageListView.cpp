#include "screens/PageListView.h"

#include "screens/Look.h"
#include "screens/QuietState.h"
#include "screens/Style.h"

#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

PageListView::PageListView(const Look &look, QWidget *parent) : QWidget(parent), m_look(look) {
    setMinimumSize(style::pagesMinimumWidth, style::pagesMinimumHeight);
    auto *list = new QWidget(this);
    list->setMinimumWidth(style::pageListMinimumWidth);
    list->setMaximumWidth(style::pageListWidth);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(list, 1);
    row->addWidget(new QuietState(look, Icon::page, u"Choose a page."_s, this), 2);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void PageListView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const int edge = layout()->itemAt(0)->geometry().width();
    painter.fillRect(0, 0, edge, height(), m_look.palette().sidebar);
    painter.fillRect(edge - style::hairline, 0, style::hairline, height(), m_look.palette().hairline);
}
