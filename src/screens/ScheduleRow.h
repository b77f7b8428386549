#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/ScheduleRowModel.h"

#include <QWidget>

class CheckToggle;
class Label;
class Look;
class WordButton;

/// The line of a schedule: what it is, a switch, and what can be done with it; all of that and more in a
/// menu, by mouse, by the menu key and by Shift+F10.
class ScheduleRow : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    ScheduleRow(const Look &look, const ScheduleRowModel &model, QWidget *parent = nullptr);

    const ScheduleRowModel &model() const { return m_model; }
    /// Shows another state of the same schedule.
    void setModel(const ScheduleRowModel &model);

    QAccessible::Role spokenRole() const override { return QAccessible::ListItem; }
    QString spokenName() const override { return m_model.name; }
    QString spokenDescription() const override { return m_model.summary; }

Q_SIGNALS:
    /// What the person wants with the schedule.
    void turned(bool isOn);
    void runRequested();
    void editRequested();
    void deleteRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void build();
    void openMenu(const QPoint &place);

    const Look &m_look;
    ScheduleRowModel m_model;
    Label *m_name;
    Label *m_prompt;
    Label *m_summary;
    WordButton *m_run;
    WordButton *m_edit;
    CheckToggle *m_toggle;
};
