#pragma once

#include "records/ChatStore.h"
#include "schedules/ScheduleStore.h"
#include "schedules/WallClock.h"
#include "screens/AppFixture.h"
#include "screens/CheckToggle.h"
#include "screens/DateTimeField.h"
#include "screens/Label.h"
#include "screens/ScheduleEditor.h"
#include "screens/ScheduleListView.h"
#include "screens/ScheduleRow.h"
#include "screens/TextEditor.h"
#include "screens/TextField.h"

#include <QMenu>

#include <mutex>

using namespace Qt::StringLiterals;

/// The window of scheduled runs over a program of its own, and what a person does there.
class ScheduleListFixture : public AppFixture {
protected:
    /// The window, with these schedules on the disk.
    void open(const QList<Schedule> &schedules = {}) {
        saveSchedules(schedules);
        view = std::make_unique<ScheduleListView>(own, look, clock);
        present(*view);
        settle();
    }
    /// The same with the chat ready.
    void openReady(const QList<Schedule> &schedules) {
        saveSchedules(schedules);
        own.bootstrap();
        ASSERT_TRUE(eventually([this] { return isIn<phase::Ready>(own.phase()); }));
        open(schedules);
    }
    /// What came up has its place now.
    static void settle() {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }
    void press(const QString &word) {
        QPushButton *button = buttonNamed(*view, word);
        ASSERT_TRUE(button) << word.toStdString();
        click(button);
        settle();
    }

    QList<ScheduleRow *> rows() const {
        QList<ScheduleRow *> all;
        for (ScheduleRow *row : view->findChildren<ScheduleRow *>()) {
            if (row->isVisible())
                all.append(row);
        }
        std::sort(all.begin(), all.end(),
                  [](const QWidget *one, const QWidget *other) { return one->y() < other->y(); });
        return all;
    }
    QStringList names() const {
        QStringList all;
        for (const ScheduleRow *row : rows())
            all.append(row->model().name);
        return all;
    }
    bool reads(const QString &text) const {
        const auto labels = view->findChildren<Label *>();
        return std::any_of(labels.begin(), labels.end(),
                           [&](const Label *label) { return label->isVisible() && label->text() == text; });
    }
    QMenu *menuOf(ScheduleRow *row) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(4, 4), row->mapToGlobal(QPoint(4, 4)));
        QCoreApplication::sendEvent(row, &event);
        return row->findChild<QMenu *>();
    }
    void chooseFromMenu(ScheduleRow *row, int entry) {
        QMenu *menu = menuOf(row);
        ASSERT_TRUE(menu);
        QAction *action = menu->actions().at(entry);
        menu->close();
        action->trigger();
        settle();
    }

    ScheduleEditor *editor() const { return view->findChild<ScheduleEditor *>(); }
    TextField *title() const { return editor()->findChild<TextField *>(); }
    TextEditor *prompt() const { return editor()->findChild<TextEditor *>(); }
    CheckToggle *background() const { return editor()->findChild<CheckToggle *>(); }
    DateTimeField *field(const QString &name) const {
        for (DateTimeField *each : editor()->findChildren<DateTimeField *>()) {
            if (each->accessibleName() == name && each->isVisible())
                return each;
        }
        return nullptr;
    }
    bool syncs(const QList<Schedule> &schedules) {
        return eventually([&] {
            const std::lock_guard lock(mutex);
            return !synced.isEmpty() && synced.last() == schedules;
        });
    }

    static Task<> tell(QStringList &told, QString title, QString body) {
        told.append(title + u": "_s + body);
        co_return;
    }

    const Schedule morning{.id = QUuid::createUuid(),
                           .title = u"Morning"_s,
                           .prompt = u"What is new?"_s,
                           .hour = 8,
                           .minute = 30,
                           .enabled = true};
    const Schedule evening{.id = QUuid::createUuid(),
                           .prompt = u"Good night."_s,
                           .recurrence = ScheduleRecurrence::weekly,
                           .hour = 21,
                           .weekdays = {6, 2},
                           .runInBackground = true};
    std::mutex mutex;
    QList<QList<Schedule>> synced;
    QStringList told;
    int asked = 0; ///< how often for leave to notify
    AppState own{
        box, clock,
        AppState::Machine{.measure = [this](std::stop_token) { return measuredHere(machine); },
                          .keepAwake = [](const QString &) { return nullptr; },
                          .syncAgents =
                              [this](const QList<Schedule> &schedules) {
                                  const std::lock_guard lock(mutex);
                                  synced.append(schedules);
                              },
                          .postNotification = [this](QString title, QString body,
                                                     std::stop_token) { return tell(told, title, body); },
                          .askToNotify = [this] { ++asked; }}};
    StillLook look;
    std::unique_ptr<ScheduleListView> view;

private:
    static Task<MachineReport> measuredHere(MachineReport report) { co_return report; }
};
