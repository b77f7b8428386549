#pragma once

#include "schedules/Schedule.h"

#include <QWidget>

class AppState;
class Clock;
class Look;
class ScheduleEditor;
class ScheduleRow;
class QStackedLayout;
class QVBoxLayout;
class WordButton;

/// The window of scheduled runs: a line for each, and the sheet in which one is made or changed. Every change
/// goes through the scheduler to the disk, and shows when it comes back from there.
class ScheduleListView : public QWidget {
    Q_OBJECT

public:
    /// All must outlive this object.
    ScheduleListView(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *makeList();
    void follow();
    ScheduleRow *takeRow(const QUuid &id);
    ScheduleRow *makeRow(const Schedule &schedule);
    void dropRow(ScheduleRow *row);
    std::optional<Schedule> schedule(const QUuid &id) const;
    void save(Schedule draft);
    void turn(const QUuid &id, bool isOn);

    AppState &m_app;
    const Look &m_look;
    WordButton *m_new;
    QStackedLayout *m_stack;
    QVBoxLayout *m_column;
    QList<ScheduleRow *> m_rows;
    ScheduleEditor *m_editor;
};
