#pragma once

#include "pages/drawing/Spoken.h"

#include <QDateTime>
#include <QWidget>

class DateTimeField;
class Look;

/// A date beside an hour and a minute.
class DateTimePicker : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `name` is what both together are called aloud. `look` must outlive this object.
    DateTimePicker(const Look &look, const QString &name, QWidget *parent = nullptr);

    /// Shows a reading of the clock on the wall (WallClock.h).
    void setReading(const QDateTime &reading);

    QAccessible::Role spokenRole() const override { return QAccessible::Grouping; }
    QString spokenName() const override { return m_name; }

Q_SIGNALS:
    /// The person has chosen that reading.
    void picked(const QDateTime &reading);

private:
    const QString m_name;
    DateTimeField *m_date;
    DateTimeField *m_time;
};
