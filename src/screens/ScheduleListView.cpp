#include "screens/ScheduleListView.h"

#include "core/AppState.h"
#include "screens/Label.h"
#include "screens/QuietState.h"
#include "screens/RowArea.h"
#include "screens/ScheduleEditor.h"
#include "screens/ScheduleEditorModel.h"
#include "screens/ScheduleRow.h"
#include "screens/Style.h"

#include <QScrollArea>
#include <QShowEvent>
#include <QStackedLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ScheduleListView::ScheduleListView(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_new(new WordButton(look, u"New"_s, WordButton::Tone::quiet, this)),
      m_stack(new QStackedLayout),
      m_column(new QVBoxLayout) {
    setMinimumSize(style::schedulesMinimumWidth, style::schedulesMinimumHeight);
    setFocusProxy(m_new);
    auto *heading = new Label(look, TextStyle::headline, Label::Ink::main, Label::Fit::elided, this);
    heading->setText(u"Scheduled Runs"_s);
    constexpr int padding = style::panePadding;
    auto *header = new QHBoxLayout;
    header->setContentsMargins(padding, 0, padding, 0);
    header->addWidget(heading, 1);
    header->addWidget(m_new);
    m_stack->addWidget(new QuietState(look, Icon::clock, u"No scheduled runs yet."_s));
    m_stack->addWidget(makeList());
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, padding, 0, 0);
    all->setSpacing(style::space);
    all->addLayout(header);
    all->addLayout(m_stack, 1);
    m_editor = new ScheduleEditor(look, clock, this);

    Scheduler &scheduler = app.scheduler();
    connect(m_new, &WordButton::clicked, this,
            [this] { m_editor->open(newSchedule(), ScheduleEditor::Draft::fresh); });
    connect(m_editor, &ScheduleEditor::saved, this, &ScheduleListView::save);
    connect(m_editor, &ScheduleEditor::deleted, &scheduler, &Scheduler::remove);
    connect(&scheduler, &Scheduler::schedulesChanged, this, &ScheduleListView::follow);
    follow();
}

QWidget *ScheduleListView::makeList() {
    auto *list = new RowArea(u"Scheduled Runs"_s);
    constexpr int padding = style::panePadding;
    m_column->setContentsMargins(padding, 0, padding, padding);
    m_column->setSpacing(style::rowSpacing);
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(m_column);
    column->addStretch();
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setWidget(list);
    area->viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);
    return area;
}

void ScheduleListView::showEvent(QShowEvent *event) {
    if (!event->spontaneous()) {
        m_app.scheduler().reload();
        m_app.askToNotify();
    }
    QWidget::showEvent(event);
}

void ScheduleListView::follow() {
    QList<ScheduleRow *> rows;
    for (const Schedule &schedule : m_app.scheduler().schedules()) {
        ScheduleRow *row = takeRow(schedule.id);
        if (row)
            row->setModel(scheduleRowModel(schedule));
        else
            row = makeRow(schedule);
        m_column->insertWidget(int(rows.size()), row);
        rows.append(row);
    }
    for (ScheduleRow *row : std::exchange(m_rows, rows))
        dropRow(row);
    m_stack->setCurrentIndex(rows.isEmpty() ? 0 : 1);
}

ScheduleRow *ScheduleListView::takeRow(const QUuid &id) {
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const ScheduleRow *row) { return row->model().id == id; });
    if (found == m_rows.end())
        return nullptr;
    ScheduleRow *const row = *found;
    m_rows.erase(found);
    return row;
}

ScheduleRow *ScheduleListView::makeRow(const Schedule &schedule) {
    auto *row = new ScheduleRow(m_look, scheduleRowModel(schedule));
    connect(row, &ScheduleRow::turned, this, [this, id = schedule.id](bool isOn) { turn(id, isOn); });
    connect(row, &ScheduleRow::runRequested, this, [this, id = schedule.id] {
        if (const auto present = this->schedule(id))
            m_app.scheduler().run(*present);
    });
    connect(row, &ScheduleRow::editRequested, this, [this, id = schedule.id] {
        if (const auto present = this->schedule(id))
            m_editor->open(*present, ScheduleEditor::Draft::saved);
    });
    connect(row, &ScheduleRow::deleteRequested, this,
            [this, id = schedule.id] { m_app.scheduler().remove(id); });
    return row;
}

void ScheduleListView::dropRow(ScheduleRow *row) {
    if (row->isAncestorOf(window()->focusWidget()))
        m_new->setFocus(Qt::OtherFocusReason);
    row->hide();
    row->deleteLater();
}

std::optional<Schedule> ScheduleListView::schedule(const QUuid &id) const {
    for (const Schedule &schedule : m_app.scheduler().schedules()) {
        if (schedule.id == id)
            return schedule;
    }
    return std::nullopt;
}

void ScheduleListView::save(Schedule draft) {
    // It may have run while the person wrote.
    if (const auto present = schedule(draft.id)) {
        draft.lastRun = present->lastRun;
        draft.lastChatId = present->lastChatId;
    }
    m_app.scheduler().upsert(draft);
    m_app.askToNotify();
}

void ScheduleListView::turn(const QUuid &id, bool isOn) {
    if (auto present = schedule(id)) {
        present->enabled = isOn;
        m_app.scheduler().upsert(*present);
        // Nothing comes back from a disk that took nothing.
        follow();
    }
}
