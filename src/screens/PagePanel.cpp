#include "screens/PagePanel.h"

#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/PageView.h"
#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PagePanel::PagePanel(const Look &look, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_header(makeHeader()),
      m_page(new PageView(look, {style::panelPaperWidth, style::panelExportWidth}, u"No page open."_s)) {
    setMinimumWidth(style::panelMinimumWidth);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_header);
    column->addWidget(m_page, 1);
    auto *keys = new QShortcut(QKeySequence::Save, this);
    connect(keys, &QShortcut::activated, this, &PagePanel::saveRequested);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

QWidget *PagePanel::makeHeader() {
    auto *header = new QWidget(this);
    auto *name = new Label(m_look, TextStyle::title, Label::Ink::main, Label::Fit::elided);
    name->setText(u"Page"_s);
    auto *close = new WordButton(m_look, u"Close"_s);
    auto *save = new WordButton(m_look, u"Save"_s, WordButton::Tone::loud);
    connect(close, &WordButton::clicked, this, &PagePanel::closeRequested);
    connect(save, &WordButton::clicked, this, &PagePanel::saveRequested);
    auto *row = new QHBoxLayout(header);
    constexpr int padding = style::pageBarPadding;
    row->setContentsMargins(padding, padding, padding, padding + style::hairline);
    row->setSpacing(style::spaceSmall);
    row->addWidget(name, 1);
    row->addWidget(close);
    row->addWidget(save);
    return header;
}

void PagePanel::setDocument(const std::optional<PageDocument> &document) {
    m_page->setDocument(document);
}

void PagePanel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.fillRect(rect(), m_look.palette().background);
    painter.fillRect(0, m_header->geometry().bottom(), width(), style::hairline, m_look.palette().hairline);
}

void PagePanel::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        Q_EMIT saveRequested();
    else
        QWidget::keyPressEvent(event);
}
