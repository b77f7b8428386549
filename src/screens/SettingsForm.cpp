#include "screens/SettingsForm.h"

#include "screens/FormSection.h"
#include "screens/Style.h"

#include <QVBoxLayout>

SettingsForm::SettingsForm(QWidget *parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    viewport()->setAutoFillBackground(false);
}

void SettingsForm::setSections(const QList<FormSection *> &sections) {
    // The button that has brought this about may be among what goes.
    if (QWidget *before = takeWidget()) {
        before->hide();
        before->deleteLater();
    }
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    constexpr int padding = style::panePadding;
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(style::spaceLarge);
    for (FormSection *section : sections)
        column->addWidget(section);
    column->addStretch();
    setWidget(page);
    page->setAutoFillBackground(false);
    page->show();
}
