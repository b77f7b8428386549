#include "screens/PageListView.h"

#include "pages/PageStore.h"
#include "records/Folders.h"
#include "screens/Look.h"
#include "screens/PageList.h"
#include "screens/PageView.h"
#include "screens/Style.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QShowEvent>

using namespace Qt::StringLiterals;

PageListView::PageListView(const Look &look, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_sidebar(new QWidget(this)),
      m_list(new PageList(look)),
      m_page(new PageView(look, {style::listPaperWidth, style::listExportWidth}, u"Choose a page."_s)) {
    setMinimumSize(style::pagesMinimumWidth, style::pagesMinimumHeight);
    m_sidebar->setMinimumWidth(style::pageListMinimumWidth);
    m_sidebar->setMaximumWidth(style::pageListWidth);
    auto *inside = new QHBoxLayout(m_sidebar);
    inside->setContentsMargins(style::space, style::space, style::space + style::hairline, style::space);
    inside->addWidget(m_list);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar, 1);
    row->addWidget(m_page, 2);
    connect(m_list, &PageList::chosen, this, [this](const QUuid &id) { m_page->setDocument(loadPage(id)); });
    connect(m_list, &PageList::deleteRequested, this, [this](const QUuid &id) {
        deletePage(id);
        refresh();
    });
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void PageListView::beginAnew() {
    m_page->setDocument(std::nullopt);
    refresh();
}

void PageListView::refresh() {
    ensurePagesFolder();
    m_list->setPages(listPages());
}

void PageListView::showEvent(QShowEvent *event) {
    if (!event->spontaneous())
        refresh();
    QWidget::showEvent(event);
}

void PageListView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const QRect edge(m_sidebar->geometry().right(), 0, style::hairline, height());
    painter.fillRect(0, 0, edge.left(), height(), m_look.palette().sidebar);
    painter.fillRect(edge, m_look.palette().hairline);
}
