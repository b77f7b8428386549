#include "screens/ScheduleRow.h"

#include "screens/CheckToggle.h"
#include "screens/HouseStyle.h"
#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/WordButton.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

using namespace Qt::StringLiterals;

ScheduleRow::ScheduleRow(const Look &look, const ScheduleRowModel &model, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_name(new Label(look, TextStyle::title, Label::Ink::main, Label::Fit::elided, this)),
      m_prompt(new Label(look, TextStyle::callout, Label::Ink::secondary, Label::Fit::elided, this)),
      m_summary(new Label(look, TextStyle::caption, Label::Ink::secondary, Label::Fit::wrapped, this)),
      m_run(new WordButton(look, u"Run now"_s, WordButton::Tone::quiet, this)),
      m_edit(new WordButton(look, u"Edit"_s, WordButton::Tone::quiet, this)),
      m_toggle(new CheckToggle(look, {}, this)) {
    Spoken::install();
    build();
    connect(m_run, &WordButton::clicked, this, &ScheduleRow::runRequested);
    connect(m_edit, &WordButton::clicked, this, &ScheduleRow::editRequested);
    connect(m_toggle, &CheckToggle::turned, this, &ScheduleRow::turned);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    setModel(model);
}

void ScheduleRow::build() {
    auto *texts = new QVBoxLayout;
    texts->setSpacing(style::pageRowLineGap);
    texts->addWidget(m_name);
    texts->addWidget(m_prompt);
    texts->addWidget(m_summary);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(style::formPadding, style::scheduleRowPadding, style::formPadding,
                            style::scheduleRowPadding);
    row->setSpacing(style::spaceSmall);
    row->addLayout(texts, 1);
    row->addSpacing(style::spaceSmall);
    row->addWidget(m_run);
    row->addWidget(m_edit);
    row->addWidget(m_toggle);
}

void ScheduleRow::setModel(const ScheduleRowModel &model) {
    m_model = model;
    m_name->setText(model.name);
    m_prompt->setText(model.prompt);
    m_summary->setText(model.summary);
    m_toggle->setAccessibleName(model.name);
    m_toggle->setOn(model.isEnabled);
    m_run->setAccessibleDescription(model.name);
    m_edit->setAccessibleDescription(model.name);
}

void ScheduleRow::openMenu(const QPoint &place) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"Run now"_s, this, &ScheduleRow::runRequested);
    menu->addAction(u"Edit"_s, this, &ScheduleRow::editRequested);
    HouseStyle::setDestructive(*menu->addAction(u"Delete"_s, this, &ScheduleRow::deleteRequested));
    menu->popup(place);
}

void ScheduleRow::keyPressEvent(QKeyEvent *event) {
    if (opensMenu(*event))
        openMenu(mapToGlobal(rect().center()));
    else
        QWidget::keyPressEvent(event);
}

void ScheduleRow::contextMenuEvent(QContextMenuEvent *event) {
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    openMenu(isByMouse ? event->globalPos() : mapToGlobal(rect().center()));
}

void ScheduleRow::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_look.palette().edge(), style::hairline));
    painter.setBrush(m_look.palette().cardFill());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style::radiusCard,
                            style::radiusCard);
}
