#include "screens/PageView.h"

#include "screens/FlowLayout.h"
#include "screens/Look.h"
#include "screens/PageFile.h"
#include "screens/PageSheet.h"
#include "screens/QuietState.h"
#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QPainter>
#include <QStackedLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PageView::PageView(const Look &look, const Widths &widths, const QString &emptySentence, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_widths(widths),
      m_sheet(new PageSheet(look, widths.shown)),
      m_footer(makeFooter()),
      m_stack(new QStackedLayout(this)) {
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_sheet, 1);
    column->addWidget(m_footer);
    m_stack->addWidget(new QuietState(look, Icon::page, emptySentence));
    m_stack->addWidget(page);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

QWidget *PageView::makeFooter() {
    auto *footer = new QWidget;
    auto *buttons = new FlowLayout(style::spaceSmall);
    constexpr int padding = style::pageBarPadding;
    auto *inside = new QVBoxLayout(footer);
    inside->setContentsMargins(padding, padding + style::hairline, padding, padding);
    inside->addLayout(buttons);
    for (const auto &[word, kind] :
         {std::pair(u"Save as PDF"_s, PageFileKind::pdf), std::pair(u"Save as image"_s, PageFileKind::png)}) {
        auto *button = new WordButton(m_look, word);
        connect(button, &WordButton::clicked, this,
                [this, fileKind = kind] { savePageAs(window(), *m_document, fileKind, m_widths.exported); });
        buttons->addWidget(button);
    }
    return footer;
}

void PageView::setDocument(const std::optional<PageDocument> &document) {
    if (document == m_document)
        return;
    m_document = document;
    if (document)
        m_sheet->setPage(*document);
    else
        m_sheet->clear();
    m_stack->setCurrentIndex(document ? 1 : 0);
    update();
}

void PageView::paintEvent(QPaintEvent *) {
    if (m_document)
        QPainter(this).fillRect(0, m_footer->y(), width(), style::hairline, m_look.palette().hairline);
}
