#pragma once

#include "pages/drawing/Spoken.h"

#include <QList>
#include <QWidget>

#include <set>

class Look;
class WeekdayButton;

/// The seven weekdays from Sunday on, each of which is on or off.
class WeekdayPicker : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit WeekdayPicker(const Look &look, QWidget *parent = nullptr);

    /// Shows these days as on; 1 is Sunday, 7 Saturday.
    void setDays(const std::set<qint64> &days);

    QAccessible::Role spokenRole() const override { return QAccessible::Grouping; }
    QString spokenName() const override;

Q_SIGNALS:
    /// The person has turned that day.
    void turned(qint64 day, bool isOn);

private:
    QList<WeekdayButton *> m_buttons;
};
