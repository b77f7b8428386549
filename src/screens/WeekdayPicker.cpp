#include "screens/WeekdayPicker.h"

#include "screens/Style.h"
#include "screens/WeekdayButton.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

WeekdayPicker::WeekdayPicker(const Look &look, QWidget *parent) : QWidget(parent) {
    Spoken::install();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::spaceSmall);
    for (const QString &name : {u"Sunday"_s, u"Monday"_s, u"Tuesday"_s, u"Wednesday"_s, u"Thursday"_s,
                                u"Friday"_s, u"Saturday"_s}) {
        auto *button = new WeekdayButton(look, name, this);
        row->addWidget(button);
        m_buttons.append(button);
        connect(button, &WeekdayButton::toggled, this,
                [this, day = m_buttons.size()](bool isOn) { Q_EMIT turned(day, isOn); });
    }
}

void WeekdayPicker::setDays(const std::set<qint64> &days) {
    const QSignalBlocker silence(this);
    for (qsizetype index = 0; index < m_buttons.size(); ++index)
        m_buttons.at(index)->setChecked(days.contains(index + 1));
}

QString WeekdayPicker::spokenName() const {
    return u"Weekdays"_s;
}
