#include "screens/ScheduleEditor.h"

#include "platform/Clock.h"
#include "schedules/WallClock.h"
#include "screens/CheckToggle.h"
#include "screens/DateTimeField.h"
#include "screens/DateTimePicker.h"
#include "screens/EditorBox.h"
#include "screens/Label.h"
#include "screens/ScheduleEditorModel.h"
#include "screens/ScheduleRowModel.h"
#include "screens/SegmentedPicker.h"
#include "screens/Style.h"
#include "screens/SwitchRow.h"
#include "screens/TextEditor.h"
#include "screens/TextField.h"
#include "screens/WeekdayPicker.h"

#include <QHBoxLayout>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace {

QStringList recurrenceNames() {
    QStringList names;
    for (const ScheduleRecurrence recurrence : recurrences)
        names.append(displayName(recurrence));
    return names;
}

} // namespace

ScheduleEditor::ScheduleEditor(const Look &look, Clock &clock, QWidget *parent)
    : Sheet(look, u"Scheduled run"_s, parent),
      m_look(look),
      m_clock(clock),
      m_title(new TextField(look, u"Name"_s)),
      m_prompt(new TextEditor(look, TextStyle::callout, u"Prompt"_s)),
      m_recurrence(new SegmentedPicker(look, u"Repeat"_s, recurrenceNames())),
      m_days(new WeekdayPicker(look)),
      m_moment(new DateTimePicker(look, u"Date and time"_s)),
      m_time(new DateTimeField(look, DateTimeField::Kind::time, u"Time"_s)),
      m_background(new SwitchRow(look, u"Run even when Ostrelin is closed"_s)) {
    setPageWidth(style::scheduleEditorWidth);
    addHeading(u"Scheduled run"_s);
    addBody(makeFields(), m_title);
    m_delete = addLeadingButton(u"Delete"_s, WordButton::Tone::destructive);
    WordButton *cancel = addButton(u"Cancel"_s);
    m_save = addButton(u"Save"_s, WordButton::Tone::loud);
    const auto close = [this] { setShown(false); };
    connect(cancel, &WordButton::clicked, this, close);
    connect(this, &Sheet::escaped, this, close);
    observe();
}

QWidget *ScheduleEditor::makeFields() {
    auto *fields = new QWidget;
    auto *column = new QVBoxLayout(fields);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::space);
    const auto addBelowName = [&](const QString &name, QWidget *control) {
        auto *caption = new Label(m_look, TextStyle::caption, Label::Ink::secondary);
        caption->setText(name);
        auto *both = new QVBoxLayout;
        both->setSpacing(style::spaceTiny);
        both->addWidget(caption);
        both->addWidget(control);
        column->addLayout(both);
    };
    auto *promptBox = new EditorBox(m_look, m_prompt);
    promptBox->setFixedHeight(style::promptEditorHeight);
    addBelowName(u"Name"_s, m_title);
    addBelowName(u"Prompt"_s, promptBox);
    addRow(*column, u"Repeat"_s, m_recurrence);
    column->addWidget(m_days, 0, Qt::AlignRight);
    m_momentRow = addRow(*column, u"Date and time"_s, m_moment);
    m_timeRow = addRow(*column, u"Time"_s, m_time);
    auto *remark = new Label(m_look, TextStyle::caption, Label::Ink::secondary, Label::Fit::wrapped);
    remark->setText(u"Runs in the background need this Mac at the scheduled time. Ostrelin posts a "
                    "notification when the run is ready."_s);
    auto *background = new QVBoxLayout;
    background->setSpacing(style::spaceTiny);
    background->addWidget(m_background);
    background->addWidget(remark);
    column->addLayout(background);
    return fields;
}

QWidget *ScheduleEditor::addRow(QVBoxLayout &column, const QString &name, QWidget *control) {
    auto *row = new QWidget;
    auto *label = new Label(m_look, TextStyle::callout, Label::Ink::main, Label::Fit::elided);
    label->setText(name);
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(style::space);
    line->addWidget(label, 1);
    line->addWidget(control);
    column.addWidget(row);
    return row;
}

void ScheduleEditor::observe() {
    connect(m_title, &QLineEdit::textChanged, this, [this](const QString &text) { m_draft.title = text; });
    connect(m_prompt, &QTextEdit::textChanged, this, [this] {
        m_draft.prompt = m_prompt->writtenText();
        showWhetherItCanBeSaved();
    });
    connect(m_recurrence, &SegmentedPicker::picked, this, [this](int index) {
        m_draft.recurrence = recurrences.at(size_t(index));
        showTimes();
    });
    connect(m_days, &WeekdayPicker::turned, this, &ScheduleEditor::turnDay);
    connect(m_moment, &DateTimePicker::picked, this,
            [this](const QDateTime &reading) { m_draft.onceDate = firstReached(reading); });
    connect(m_time, &DateTimeField::changed, this, [this] {
        m_draft.hour = m_time->time().hour();
        m_draft.minute = m_time->time().minute();
    });
    connect(m_background->toggle(), &CheckToggle::turned, this,
            [this](bool isOn) { m_draft.runInBackground = isOn; });
    connect(m_save, &WordButton::clicked, this, &ScheduleEditor::save);
    connect(m_delete, &WordButton::clicked, this, [this] {
        Q_EMIT deleted(m_draft.id);
        setShown(false);
    });
}

void ScheduleEditor::open(const Schedule &schedule, Draft draft) {
    m_draft = schedule;
    m_weekdays = {schedule.weekdays.begin(), schedule.weekdays.end()};
    m_title->setText(schedule.title);
    m_prompt->setPlainText(schedule.prompt);
    // What the fields could not hold as it is comes back to the draft only if the person changes it.
    m_draft.title = schedule.title;
    m_draft.prompt = schedule.prompt;
    m_recurrence->setCurrent(int(schedule.recurrence));
    m_days->setDays(m_weekdays);
    m_background->toggle()->setOn(schedule.runInBackground);
    m_delete->setVisible(draft == Draft::saved);
    showTimes();
    showWhetherItCanBeSaved();
    setShown(true);
}

void ScheduleEditor::showTimes() {
    const ScheduleEditorModel model = scheduleEditorModel(m_draft, m_clock.now());
    m_days->setVisible(model.offersWeekdays);
    m_momentRow->setVisible(model.offersMoment);
    m_moment->setReading(model.moment);
    m_timeRow->setVisible(model.offersTime);
    m_time->setReading(QDateTime(model.moment.date(), model.time, Qt::UTC));
    m_background->setEnabled(model.canRunInBackground);
}

void ScheduleEditor::showWhetherItCanBeSaved() {
    m_save->setEnabled(scheduleEditorModel(m_draft, m_clock.now()).canSave);
}

void ScheduleEditor::turnDay(qint64 day, bool isOn) {
    if (isOn)
        m_weekdays.insert(day);
    else
        m_weekdays.erase(day);
}

void ScheduleEditor::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && isShown() && !event->isAutoRepeat())
        m_save->click();
    else
        Sheet::keyPressEvent(event);
}

void ScheduleEditor::save() {
    m_draft.weekdays = {m_weekdays.begin(), m_weekdays.end()};
    Q_EMIT saved(m_draft);
    setShown(false);
}
