#include "screens/ScheduleListView.h"

#include "records/ChatStore.h"
#include "schedules/ScheduleStore.h"
#include "schedules/WallClock.h"
#include "screens/AppFixture.h"
#include "screens/CheckToggle.h"
#include "screens/DateTimeField.h"
#include "screens/DateTimePicker.h"
#include "screens/Label.h"
#include "screens/ScheduleEditor.h"
#include "screens/ScheduleRow.h"
#include "screens/SegmentedPicker.h"
#include "screens/TextEditor.h"
#include "screens/TextField.h"
#include "screens/WeekdayPicker.h"

#include <QMenu>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <csignal>
#include <mutex>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

/// While it lives, this process can't write a byte to any file.
class FullDisk {
public:
    FullDisk() {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit nothing{.rlim_cur = 0, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

class ScheduleListViewTest : public AppFixture {
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

} // namespace

TEST_F(ScheduleListViewTest, withoutSchedulesItSaysSo) {
    open();
    EXPECT_TRUE(reads(u"Scheduled Runs"_s));
    EXPECT_TRUE(reads(u"No scheduled runs yet."_s));
    EXPECT_TRUE(buttonNamed(*view, u"New"_s));
    EXPECT_EQ(view->minimumSize(), QSize(520, 420));
    EXPECT_FALSE(editor()->isVisible());
}

TEST_F(ScheduleListViewTest, eachScheduleHasALineInTheirOrder) {
    open({morning, evening});
    EXPECT_EQ(names(), (QStringList{u"Morning"_s, u"Scheduled run"_s}));
    for (const QString &text : {u"Morning"_s, u"What is new?"_s, u"Daily · 08:30"_s, u"Scheduled run"_s,
                                u"Good night."_s, u"Weekly · 21:00 · runs in the background"_s})
        EXPECT_TRUE(reads(text)) << text.toStdString();
    EXPECT_FALSE(reads(u"No scheduled runs yet."_s));
    EXPECT_TRUE(rows().at(0)->findChild<CheckToggle *>()->isChecked());
    EXPECT_FALSE(rows().at(1)->findChild<CheckToggle *>()->isChecked());
}

TEST_F(ScheduleListViewTest, aLineIsReadAsAnItemOfTheList) {
    open({morning});
    EXPECT_EQ(spokenRole(rows().first()), QAccessible::ListItem);
    EXPECT_EQ(spokenName(rows().first()), u"Morning"_s);
    EXPECT_EQ(spokenName(rows().first()->findChild<CheckToggle *>()), u"Morning"_s);
    EXPECT_EQ(spokenRole(rows().first()->findChild<CheckToggle *>()), QAccessible::CheckBox);
}

TEST_F(ScheduleListViewTest, whatIsOnTheDiskIsReadWhenItOpens) {
    open();
    saveSchedules({morning});
    view->hide();
    view->show();
    settle();
    EXPECT_EQ(names(), QStringList(u"Morning"_s));
}

TEST_F(ScheduleListViewTest, leaveToNotifyIsAskedWhenItOpensAndWhenOneIsSaved) {
    open({morning});
    EXPECT_EQ(asked, 1);
    press(u"Edit"_s);
    press(u"Cancel"_s);
    click(rows().first()->findChild<CheckToggle *>());
    EXPECT_EQ(asked, 1);
    press(u"Edit"_s);
    press(u"Save"_s);
    EXPECT_EQ(asked, 2);
}

TEST_F(ScheduleListViewTest, onlyTheNameOfALineHasTheMainInk) {
    open({morning});
    const auto ink = [this](const QString &text) {
        for (const Label *label : rows().first()->findChildren<Label *>()) {
            if (label->text() == text)
                return label->palette().color(QPalette::WindowText);
        }
        return QColor();
    };
    EXPECT_EQ(ink(u"Morning"_s), look.palette().ink);
    EXPECT_EQ(ink(u"What is new?"_s), look.palette().secondaryInk());
    EXPECT_EQ(ink(u"Daily · 08:30"_s), look.palette().secondaryInk());
}

TEST_F(ScheduleListViewTest, theSummaryIsWholeInTheSmallestWindowAtAnySizeOfText) {
    open({evening});
    for (const TextSize size : textSizes) {
        Settings settings;
        settings.textSize = size;
        look.follow(settings);
        view->resize(view->minimumSize());
        settle();
        const auto labels = rows().first()->findChildren<Label *>();
        const auto summary = std::find_if(labels.begin(), labels.end(), [](const Label *label) {
            return label->text().startsWith(u"Weekly"_s);
        });
        ASSERT_NE(summary, labels.end());
        const QRect room((*summary)->contentsRect());
        const QRect text = (*summary)->fontMetrics().boundingRect(
            QRect(0, 0, room.width(), QWIDGETSIZE_MAX), (*summary)->wordWrap() ? Qt::TextWordWrap : 0,
            (*summary)->text());
        EXPECT_LE(text.width(), room.width());
        EXPECT_LE(text.height(), room.height());
    }
}

TEST_F(ScheduleListViewTest, theSwitchGoesToTheDiskAndToTheSystem) {
    open({morning, evening});
    click(rows().first()->findChild<CheckToggle *>());
    Schedule off = morning;
    off.enabled = false;
    EXPECT_EQ(loadSchedules(), (QList{off, evening}));
    EXPECT_TRUE(syncs({off, evening}));
    EXPECT_FALSE(rows().first()->findChild<CheckToggle *>()->isChecked());
    click(rows().first()->findChild<CheckToggle *>());
    EXPECT_TRUE(syncs({morning, evening}));
}

TEST_F(ScheduleListViewTest, theSwitchGoesBackWhereTheDiskTakesNothing) {
    open({morning});
    {
        const FullDisk disk;
        click(rows().first()->findChild<CheckToggle *>());
    }
    EXPECT_EQ(loadSchedules(), QList{morning});
    EXPECT_TRUE(rows().first()->findChild<CheckToggle *>()->isChecked());
}

TEST_F(ScheduleListViewTest, aLineStaysTheSameWhenItsScheduleChanges) {
    open({morning, evening});
    const QList<ScheduleRow *> before = rows();
    Schedule renamed = morning;
    renamed.title = u"Dawn"_s;
    own.scheduler().upsert(renamed);
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(names().first(), u"Dawn"_s);
}

TEST_F(ScheduleListViewTest, theMenuDeletesAtOnce) {
    open({morning, evening});
    QMenu *menu = menuOf(rows().first());
    ASSERT_TRUE(menu);
    QStringList entries;
    for (const QAction *action : menu->actions())
        entries.append(action->text());
    EXPECT_EQ(entries, (QStringList{u"Run now"_s, u"Edit"_s, u"Delete"_s}));
    EXPECT_TRUE(menu->actions().last()->property("destructive").toBool());
    delete menu;
    chooseFromMenu(rows().first(), 2);
    EXPECT_EQ(loadSchedules(), QList{evening});
    EXPECT_TRUE(syncs({evening}));
    EXPECT_EQ(names(), QStringList(u"Scheduled run"_s));
}

TEST_F(ScheduleListViewTest, keysOpenTheMenuOfTheirLine) {
    open({morning, evening});
    QPushButton *edit = buttonNamed(*rows().last(), u"Edit"_s);
    edit->setFocus(Qt::TabFocusReason);
    QTest::keyClick(edit, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(rows().last()->findChild<QMenu *>());
    EXPECT_FALSE(rows().first()->findChild<QMenu *>());
}

TEST_F(ScheduleListViewTest, theKeyboardGoesToNewWhenItsLineGoes) {
    open({morning});
    buttonNamed(*view, u"Edit"_s)->setFocus();
    own.scheduler().remove(morning.id);
    EXPECT_TRUE(buttonNamed(*view, u"New"_s)->hasFocus());
    EXPECT_TRUE(reads(u"No scheduled runs yet."_s));
}

TEST_F(ScheduleListViewTest, runNowRunsAlsoADisabledOne) {
    engine.answer(Script(200).raw("data: [DONE]\n\n"));
    openReady({evening});
    press(u"Run now"_s);
    ASSERT_TRUE(eventually([this] { return !told.isEmpty(); }));
    EXPECT_EQ(told.first(), u"Scheduled run: Your scheduled run is ready."_s);
    const Schedule ran = loadSchedules().value(0);
    EXPECT_TRUE(ran.lastRun);
    ASSERT_TRUE(ran.lastChatId);
    EXPECT_EQ(ChatStore().load(*ran.lastChatId)->messages.value(0).content, u"Good night."_s);
}

TEST_F(ScheduleListViewTest, nothingRunsBeforeTheChatIsReady) {
    open({morning});
    press(u"Run now"_s);
    chooseFromMenu(rows().first(), 0);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(loadSchedules(), QList{morning});
}

TEST_F(ScheduleListViewTest, newBeginsWithADailyRunAtNine) {
    open();
    press(u"New"_s);
    EXPECT_TRUE(editor()->isShown());
    EXPECT_EQ(editor()->page().width(), 460);
    EXPECT_EQ(spokenName(editor()), u"Scheduled run"_s);
    EXPECT_EQ(spokenRole(editor()), QAccessible::Dialog);
    EXPECT_TRUE(title()->hasFocus());
    EXPECT_EQ(title()->text(), QString());
    EXPECT_EQ(editor()->findChild<SegmentedPicker *>()->current(), 1);
    EXPECT_EQ(field(u"Time"_s)->time(), QTime(9, 0));
    EXPECT_FALSE(background()->isChecked());
    EXPECT_FALSE(buttonNamed(*editor(), u"Delete"_s)) << "it isn't on the disk yet";
    for (const QString &text :
         {u"Scheduled run"_s, u"Name"_s, u"Prompt"_s, u"Repeat"_s, u"Time"_s,
          u"Run even when Ostrelin is closed"_s,
          u"Runs in the background need this Mac at the scheduled time. Ostrelin posts a notification when "
          "the run is ready."_s})
        EXPECT_TRUE(reads(text)) << text.toStdString();
    const auto labels = editor()->findChildren<Label *>();
    const auto remark = std::find_if(labels.begin(), labels.end(), [](const Label *label) {
        return label->text().startsWith(u"Runs in the background"_s);
    });
    EXPECT_EQ((*remark)->font(), look.font(TextStyle::caption));
}

TEST_F(ScheduleListViewTest, aNewOneIsWrittenWithKeysAlone) {
    open();
    press(u"New"_s);
    QTest::keyClicks(title(), u"Tea"_s);
    QTest::keyClick(title(), Qt::Key_Tab);
    ASSERT_TRUE(prompt()->hasFocus());
    QTest::keyClicks(prompt(), u"Brew"_s);
    QTest::keyClick(prompt(), Qt::Key_Return);
    QTest::keyClicks(prompt(), u"it"_s);
    QTest::keyClick(prompt(), Qt::Key_Tab);
    EXPECT_EQ(spokenName(view->focusWidget()), u"Daily"_s);
    QTest::keyClick(view->focusWidget(), Qt::Key_Right);
    settle();
    QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(spokenName(view->focusWidget()), u"Sunday"_s);
    QTest::keyClick(view->focusWidget(), Qt::Key_Space);
    for (int day = 0; day < 7; ++day)
        QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(view->focusWidget(), field(u"Time"_s));
    QTest::keyClicks(field(u"Time"_s), u"0715"_s);
    QTest::keyClick(field(u"Time"_s), Qt::Key_Return);
    ASSERT_EQ(loadSchedules().size(), 1);
    const Schedule made = loadSchedules().first();
    EXPECT_EQ(made, (Schedule{.id = made.id,
                              .title = u"Tea"_s,
                              .prompt = u"Brew\nit"_s,
                              .recurrence = ScheduleRecurrence::weekly,
                              .hour = 7,
                              .minute = 15,
                              .weekdays = {1},
                              .enabled = true}));
    EXPECT_FALSE(editor()->isShown());
    EXPECT_TRUE(syncs({made}));
    settle();
    EXPECT_EQ(names(), QStringList(u"Tea"_s));
}

TEST_F(ScheduleListViewTest, tabGoesThroughAllFieldsAndButtonsAndRoundAgain) {
    open({evening});
    press(u"Edit"_s);
    QStringList stops;
    for (int stop = 0; stop < 16; ++stop) {
        QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
        stops.append(view->focusWidget()->accessibleName());
        if (stops.last() == u"Name"_s)
            break;
    }
    // The time is two stops, its hours and its minutes.
    EXPECT_EQ(stops, (QStringList{u"Prompt"_s, u"Weekly"_s, u"Sunday"_s, u"Monday"_s, u"Tuesday"_s,
                                  u"Wednesday"_s, u"Thursday"_s, u"Friday"_s, u"Saturday"_s, u"Time"_s,
                                  u"Time"_s, u"Run even when Ostrelin is closed"_s, u"Delete"_s, u"Cancel"_s,
                                  u"Save"_s, u"Name"_s}));
}

TEST_F(ScheduleListViewTest, onlyAPromptWithAWordInItCanBeSaved) {
    open();
    press(u"New"_s);
    QPushButton *save = buttonNamed(*editor(), u"Save"_s);
    EXPECT_FALSE(save->isEnabled());
    QTest::keyClicks(prompt(), u"   "_s);
    EXPECT_FALSE(save->isEnabled());
    QTest::keyClick(title(), Qt::Key_Return);
    EXPECT_TRUE(editor()->isShown());
    EXPECT_TRUE(loadSchedules().isEmpty());
    QTest::keyClicks(prompt(), u"x"_s);
    EXPECT_TRUE(save->isEnabled());
    QTest::keyClick(prompt(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(loadSchedules().size(), 1);
    EXPECT_EQ(loadSchedules().first().prompt, u"   x"_s) << "what was written is stored as it is";
    EXPECT_EQ(loadSchedules().first().title, QString());
}

TEST_F(ScheduleListViewTest, cancelAndEscapeStoreNothing) {
    open({morning});
    press(u"Edit"_s);
    QTest::keyClicks(title(), u" and more"_s);
    press(u"Cancel"_s);
    EXPECT_FALSE(editor()->isShown());
    press(u"Edit"_s);
    EXPECT_EQ(title()->text(), u"Morning"_s);
    QTest::keyClicks(prompt(), u"!"_s);
    QTest::keyClick(prompt(), Qt::Key_Escape);
    EXPECT_FALSE(editor()->isShown());
    EXPECT_EQ(loadSchedules(), QList{morning});
    EXPECT_TRUE(buttonNamed(*rows().first(), u"Edit"_s)->hasFocus());
}

TEST_F(ScheduleListViewTest, anEditedOneKeepsItsPlace) {
    open({morning, evening});
    press(u"Edit"_s);
    EXPECT_EQ(prompt()->writtenText(), morning.prompt);
    title()->setText(u"Dawn"_s);
    press(u"Save"_s);
    Schedule renamed = morning;
    renamed.title = u"Dawn"_s;
    EXPECT_EQ(loadSchedules(), (QList{renamed, evening}));
    EXPECT_EQ(names(), (QStringList{u"Dawn"_s, u"Scheduled run"_s}));
}

TEST_F(ScheduleListViewTest, savingWithoutAChangeChangesNoMoreThanTheOrderOfTheDays) {
    Schedule strange = evening;
    strange.title = u"two\nlines"_s;
    strange.hour = 99;
    strange.weekdays = {9, 6, 2, 6};
    open({strange});
    press(u"Edit"_s);
    press(u"Save"_s);
    strange.weekdays = {2, 6, 9};
    EXPECT_EQ(loadSchedules(), QList{strange});
}

TEST_F(ScheduleListViewTest, theWeekdaysAreStoredInTheirOrder) {
    open({evening});
    press(u"Edit"_s);
    EXPECT_TRUE(buttonNamed(*editor(), u"Monday"_s)->isChecked());
    EXPECT_TRUE(buttonNamed(*editor(), u"Friday"_s)->isChecked());
    QStringList letters;
    for (const QPushButton *day : editor()->findChild<WeekdayPicker *>()->findChildren<QPushButton *>())
        letters.append(day->text());
    EXPECT_EQ(letters.join(u' '), u"S M T W T F S"_s);
    press(u"Saturday"_s);
    press(u"Sunday"_s);
    press(u"Monday"_s);
    press(u"Save"_s);
    EXPECT_EQ(loadSchedules().first().weekdays, (QList<qint64>{1, 6, 7}));
}

TEST_F(ScheduleListViewTest, aWeeklyOneMayHaveNoDay) {
    open({evening});
    press(u"Edit"_s);
    press(u"Monday"_s);
    press(u"Friday"_s);
    press(u"Save"_s);
    EXPECT_TRUE(loadSchedules().first().weekdays.isEmpty());
    EXPECT_EQ(loadSchedules().first().recurrence, ScheduleRecurrence::weekly);
}

TEST_F(ScheduleListViewTest, aBackgroundOneThatIsTurnedToOnceStaysSo) {
    open({evening});
    press(u"Edit"_s);
    EXPECT_TRUE(background()->isEnabled());
    press(u"Once"_s);
    EXPECT_FALSE(background()->isEnabled());
    EXPECT_TRUE(background()->isChecked());
    EXPECT_FALSE(buttonNamed(*editor(), u"Monday"_s));
    press(u"Save"_s);
    EXPECT_TRUE(loadSchedules().first().runInBackground);
    EXPECT_TRUE(reads(u"Once · 21:00 · runs in the background"_s)) << "hour and minute are kept";
}

TEST_F(ScheduleListViewTest, theTimeIsChosenByMouseToo) {
    open({morning});
    press(u"Edit"_s);
    DateTimeField *time = field(u"Time"_s);
    QStyleOptionSpinBox option;
    option.initFrom(time);
    option.subControls = QStyle::SC_All;
    option.buttonSymbols = QAbstractSpinBox::UpDownArrows;
    const QRect up = time->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, time);
    QTest::mouseClick(time, Qt::LeftButton, {}, up.center());
    EXPECT_EQ(time->time(), QTime(9, 30));
    press(u"Save"_s);
    EXPECT_EQ(loadSchedules().first().hour, 9);
}

TEST_F(ScheduleListViewTest, theWheelChangesOnlyATimeThatHasTheKeyboard) {
    open({morning});
    press(u"Edit"_s);
    DateTimeField *time = field(u"Time"_s);
    const auto turnWheel = [time] {
        QWheelEvent event(QPointF(8, 8), time->mapToGlobal(QPointF(8, 8)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(time, &event);
    };
    turnWheel();
    EXPECT_EQ(time->time(), QTime(8, 30));
    time->setFocus();
    turnWheel();
    EXPECT_EQ(time->time(), QTime(9, 30));
}

TEST_F(ScheduleListViewTest, aSingleRunIsStoredAtTheMomentThatWasChosen) {
    open({morning});
    press(u"Edit"_s);
    press(u"Once"_s);
    EXPECT_TRUE(reads(u"Date and time"_s));
    EXPECT_FALSE(reads(u"Time"_s));
    ASSERT_TRUE(field(u"Date"_s));
    EXPECT_EQ(field(u"Time"_s)->time().minute(), shownAt(clock.now().addSecs(3600)).time().minute());
    field(u"Date"_s)->setDate(QDate(2031, 5, 17));
    field(u"Time"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(field(u"Time"_s), u"1745"_s);
    press(u"Save"_s);
    const Schedule saved = loadSchedules().first();
    EXPECT_EQ(saved.recurrence, ScheduleRecurrence::once);
    EXPECT_EQ(saved.onceDate, firstReached(QDateTime(QDate(2031, 5, 17), QTime(17, 45), Qt::UTC)));
    EXPECT_EQ(saved.hour, morning.hour);
    press(u"Edit"_s);
    EXPECT_EQ(field(u"Date"_s)->text(), u"May 17, 2031"_s);
    EXPECT_EQ(field(u"Time"_s)->text(), u"17:45"_s);
}

TEST_F(ScheduleListViewTest, aMomentThatHasPassedMayBeSaved) {
    Schedule past = morning;
    past.recurrence = ScheduleRecurrence::once;
    past.onceDate = clock.now().addDays(-3);
    open({past});
    press(u"Edit"_s);
    press(u"Save"_s);
    EXPECT_EQ(loadSchedules().first().onceDate->toSecsSinceEpoch(), past.onceDate->toSecsSinceEpoch());
}

TEST_F(ScheduleListViewTest, aMomentThatNobodyChoseIsntStored) {
    open({morning});
    press(u"Edit"_s);
    press(u"Once"_s);
    press(u"Save"_s);
    EXPECT_FALSE(loadSchedules().first().onceDate);
}

TEST_F(ScheduleListViewTest, deletedFromTheSheetTheSheetAndTheLineGo) {
    open({morning, evening});
    press(u"Edit"_s);
    press(u"Delete"_s);
    EXPECT_FALSE(editor()->isShown());
    EXPECT_EQ(loadSchedules(), QList{evening});
    EXPECT_TRUE(syncs({evening}));
    EXPECT_EQ(names(), QStringList(u"Scheduled run"_s));
    EXPECT_TRUE(buttonNamed(*view, u"New"_s)->hasFocus());
}

TEST_F(ScheduleListViewTest, whatRanWhileItWasEditedStaysRun) {
    open({morning});
    press(u"Edit"_s);
    Schedule ran = morning;
    ran.lastRun = QDateTime(QDate(2026, 11, 15), QTime(8, 30), Qt::UTC);
    ran.lastChatId = QUuid::createUuid();
    own.scheduler().upsert(ran);
    title()->setText(u"Dawn"_s);
    press(u"Save"_s);
    ran.title = u"Dawn"_s;
    EXPECT_EQ(loadSchedules(), QList{ran});
}

TEST_F(ScheduleListViewTest, theSmallestWindowHoldsTheSheetAtAnySizeOfText) {
    open({evening});
    for (const TextSize size : textSizes) {
        Settings settings;
        settings.textSize = size;
        look.follow(settings);
        view->resize(view->minimumSize());
        settle();
        for (QPushButton *button : view->findChildren<QPushButton *>()) {
            if (button->isVisible()) {
                EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
            }
        }
        press(u"Edit"_s);
        EXPECT_TRUE(view->rect().contains(editor()->page()));
        for (const QString &word : {u"Delete"_s, u"Cancel"_s, u"Save"_s}) {
            const QPushButton *button = buttonNamed(*editor(), word);
            EXPECT_TRUE(editor()->page().contains(QRect(button->mapTo(editor(), QPoint()), button->size())))
                << word.toStdString();
        }
        // A field that gets the keyboard comes into sight.
        background()->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(background(), Qt::Key_Tab, Qt::ShiftModifier);
        QTest::keyClick(view->focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_FALSE(view->focusWidget()->visibleRegion().isEmpty());
        press(u"Cancel"_s);
    }
}

TEST_F(ScheduleListViewTest, everyControlOfTheSheetHasAName) {
    open({evening});
    press(u"Edit"_s);
    for (QPushButton *button : editor()->findChildren<QPushButton *>())
        EXPECT_FALSE(spokenName(button).isEmpty());
    EXPECT_EQ(spokenName(title()), u"Name"_s);
    EXPECT_EQ(spokenName(prompt()), u"Prompt"_s);
    EXPECT_EQ(spokenName(field(u"Time"_s)), u"Time"_s);
    EXPECT_EQ(spokenName(editor()->findChild<DateTimePicker *>()), u"Date and time"_s);
    EXPECT_EQ(spokenName(editor()->findChild<SegmentedPicker *>()), u"Repeat"_s);
}
