#include "screens/SwitchRow.h"

#include "screens/CheckToggle.h"
#include "screens/Label.h"

#include <QHBoxLayout>
#include <QMouseEvent>

SwitchRow::SwitchRow(const Look &look, const QString &name, QWidget *parent)
    : QWidget(parent),
      m_toggle(new CheckToggle(look, name)) {
    auto *label = new Label(look, TextStyle::callout, Label::Ink::main, Label::Fit::elided);
    label->setText(name);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->addWidget(label, 1);
    line->addWidget(m_toggle);
}

void SwitchRow::mousePressEvent(QMouseEvent *event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void SwitchRow::mouseReleaseEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        m_toggle->click();
}
