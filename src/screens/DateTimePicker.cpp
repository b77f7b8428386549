#include "screens/DateTimePicker.h"

#include "screens/DateTimeField.h"
#include "screens/Style.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

DateTimePicker::DateTimePicker(const Look &look, const QString &name, QWidget *parent)
    : QWidget(parent),
      m_name(name),
      m_date(new DateTimeField(look, DateTimeField::Kind::date, u"Date"_s)),
      m_time(new DateTimeField(look, DateTimeField::Kind::time, u"Time"_s)) {
    Spoken::install();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(style::spaceSmall);
    row->addWidget(m_date);
    row->addWidget(m_time);
    for (const DateTimeField *field : {m_date, m_time}) {
        connect(field, &DateTimeField::changed, this,
                [this] { Q_EMIT picked(QDateTime(m_date->date(), m_time->time(), Qt::UTC)); });
    }
}

void DateTimePicker::setReading(const QDateTime &reading) {
    m_date->setReading(reading);
    m_time->setReading(reading);
}
