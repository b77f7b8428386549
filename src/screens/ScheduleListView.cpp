#include "screens/ScheduleListView.h"

#include "screens/Label.h"
#include "screens/QuietState.h"
#include "screens/Style.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ScheduleListView::ScheduleListView(const Look &look, QWidget *parent) : QWidget(parent) {
    setMinimumSize(style::schedulesMinimumWidth, style::schedulesMinimumHeight);
    auto *heading = new Label(look, TextStyle::headline, Label::Ink::main, Label::Fit::elided, this);
    heading->setText(u"Scheduled Runs"_s);
    auto *column = new QVBoxLayout(this);
    constexpr int padding = style::panePadding;
    column->setContentsMargins(padding, padding, padding, padding);
    column->addWidget(heading);
    column->addWidget(new QuietState(look, Icon::clock, u"No scheduled runs yet."_s, this), 1);
}
