#pragma once

#include "schedules/Schedule.h"
#include "screens/Sheet.h"

#include <set>

class CheckToggle;
class Clock;
class DateTimeField;
class DateTimePicker;
class SegmentedPicker;
class SwitchRow;
class TextEditor;
class TextField;
class WeekdayPicker;
class QVBoxLayout;

/// The sheet in which a schedule is made or changed. It works on a copy of its own: nothing comes of it
/// before it is saved. Return saves, in the prompt together with Ctrl; Escape leaves all as it was.
class ScheduleEditor : public Sheet {
    Q_OBJECT

public:
    /// Covers all of `parent`. `look` and `clock` must outlive this object.
    ScheduleEditor(const Look &look, Clock &clock, QWidget *parent);

    /// Whether the schedule is on the disk already; only then it can be deleted.
    enum class Draft { fresh, saved };

    /// Shows the sheet with that schedule.
    void open(const Schedule &schedule, Draft draft);

Q_SIGNALS:
    /// The person has made this of the schedule, or wants to delete it. The sheet closes after that.
    void saved(const Schedule &schedule);
    void deleted(const QUuid &id);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeFields();
    QWidget *addRow(QVBoxLayout &column, const QString &name, QWidget *control);
    void observe();
    /// Shows the fields that the draft's recurrence asks for, with its times.
    void showTimes();
    void showWhetherItCanBeSaved();
    void turnDay(qint64 day, bool isOn);
    void save();

    const Look &m_look;
    Clock &m_clock;
    Schedule m_draft;
    std::set<qint64> m_weekdays;

    TextField *m_title;
    TextEditor *m_prompt;
    SegmentedPicker *m_recurrence;
    WeekdayPicker *m_days;
    DateTimePicker *m_moment;
    DateTimeField *m_time;
    SwitchRow *m_background;
    QWidget *m_momentRow = nullptr;
    QWidget *m_timeRow = nullptr;
    WordButton *m_delete = nullptr;
    WordButton *m_save = nullptr;
};
