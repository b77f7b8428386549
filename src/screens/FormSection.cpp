#include "screens/FormSection.h"

#include "screens/FlowLayout.h"
#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/TextView.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace {

/// The card behind the rows.
class FormCard : public QWidget {
public:
    FormCard(const Look &look, QWidget *parent) : QWidget(parent), m_look(look) {
        connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(m_look.palette().edge(), style::hairline));
        painter.setBrush(m_look.palette().cardFill());
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style::radiusCard,
                                style::radiusCard);
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (int row = 1; row < layout()->count(); ++row) {
            if (layout()->itemAt(row)->isEmpty())
                continue;
            const int top = layout()->itemAt(row)->geometry().top();
            painter.fillRect(style::formPadding, top, width() - 2 * style::formPadding, style::hairline,
                             m_look.palette().edge());
        }
    }

private:
    const Look &m_look;
};

Label *nameLabel(const Look &look, const QString &name, TextStyle textStyle = TextStyle::callout) {
    auto *label = new Label(look, textStyle, Label::Ink::main, Label::Fit::natural);
    label->setText(name);
    return label;
}

} // namespace

FormSection::FormSection(const Look &look, const QString &heading, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_card(new FormCard(look, this)),
      m_rows(new QVBoxLayout(m_card)) {
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::rowSpacing);
    auto *title = nameLabel(look, heading, TextStyle::title);
    column->addWidget(title);
    column->addWidget(m_card);
}

QWidget *FormSection::addRow(const QString &name, QWidget *control) {
    auto *row = new QHBoxLayout;
    row->setSpacing(style::spaceWide);
    row->addWidget(nameLabel(m_look, name));
    row->addStretch();
    row->addWidget(control);
    QVBoxLayout *part = addPart();
    part->addLayout(row);
    return part->parentWidget();
}

QWidget *FormSection::addTallRow(const QString &name, QWidget *control) {
    QVBoxLayout *part = addPart();
    part->addWidget(nameLabel(m_look, name));
    part->addWidget(control);
    return part->parentWidget();
}

QWidget *FormSection::addControl(QWidget *control) {
    QVBoxLayout *part = addPart();
    part->addWidget(control);
    return part->parentWidget();
}

QWidget *FormSection::addValue(const QString &name, const QString &value) {
    auto *text = new TextView(
        m_look, {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignRight});
    text->setText(value);
    auto *row = new QHBoxLayout;
    row->setSpacing(style::spaceWide);
    row->addWidget(nameLabel(m_look, name), 0, Qt::AlignTop);
    row->addWidget(text, 1);
    QVBoxLayout *part = addPart();
    part->addLayout(row);
    return part->parentWidget();
}

QWidget *FormSection::addText(const QString &text) {
    auto *view = new TextView(m_look, {.text = TextStyle::callout});
    view->setText(text);
    return addControl(view);
}

QWidget *FormSection::addButtons(const QList<QWidget *> &buttons, const QString &heading,
                                 const QString &remark) {
    QVBoxLayout *part = addPart();
    if (!heading.isEmpty())
        part->addWidget(nameLabel(m_look, heading));
    if (!remark.isEmpty()) {
        auto *view = new TextView(m_look, {.text = TextStyle::caption, .ink = TextView::Ink::secondary});
        view->setText(remark);
        part->addWidget(view);
    }
    auto *row = new FlowLayout(style::rowSpacing);
    for (QWidget *button : buttons)
        row->addWidget(button);
    part->addLayout(row);
    return part->parentWidget();
}

QVBoxLayout *FormSection::addPart() {
    auto *part = new QWidget(m_card);
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(style::formPadding, style::space, style::formPadding, style::space);
    column->setSpacing(style::spaceSmall);
    m_rows->addWidget(part);
    return column;
}
