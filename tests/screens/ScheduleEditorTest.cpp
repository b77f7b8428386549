#include "screens/DateTimePicker.h"
#include "screens/ScheduleListFixture.h"
#include "screens/SegmentedPicker.h"
#include "screens/WeekdayPicker.h"

#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

namespace {

using ScheduleEditorTest = ScheduleListFixture;

} // namespace

TEST_F(ScheduleEditorTest, newBeginsWithADailyRunAtNine) {
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

TEST_F(ScheduleEditorTest, aNewOneIsWrittenWithKeysAlone) {
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

TEST_F(ScheduleEditorTest, tabGoesThroughAllFieldsAndButtonsAndRoundAgain) {
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

TEST_F(ScheduleEditorTest, onlyAPromptWithAWordInItCanBeSaved) {
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

TEST_F(ScheduleEditorTest, cancelAndEscapeStoreNothing) {
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

TEST_F(ScheduleEditorTest, anEditedOneKeepsItsPlace) {
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

TEST_F(ScheduleEditorTest, savingWithoutAChangeChangesNoMoreThanTheOrderOfTheDays) {
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

TEST_F(ScheduleEditorTest, theWeekdaysAreStoredInTheirOrder) {
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

TEST_F(ScheduleEditorTest, aWeeklyOneMayHaveNoDay) {
    open({evening});
    press(u"Edit"_s);
    press(u"Monday"_s);
    press(u"Friday"_s);
    press(u"Save"_s);
    EXPECT_TRUE(loadSchedules().first().weekdays.isEmpty());
    EXPECT_EQ(loadSchedules().first().recurrence, ScheduleRecurrence::weekly);
}

TEST_F(ScheduleEditorTest, aBackgroundOneThatIsTurnedToOnceStaysSo) {
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

TEST_F(ScheduleEditorTest, theTimeIsChosenByMouseToo) {
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

TEST_F(ScheduleEditorTest, theWheelChangesOnlyATimeThatHasTheKeyboard) {
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

TEST_F(ScheduleEditorTest, aSingleRunIsStoredAtTheMomentThatWasChosen) {
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

TEST_F(ScheduleEditorTest, aMomentThatHasPassedMayBeSaved) {
    Schedule past = morning;
    past.recurrence = ScheduleRecurrence::once;
    past.onceDate = clock.now().addDays(-3);
    open({past});
    press(u"Edit"_s);
    press(u"Save"_s);
    EXPECT_EQ(loadSchedules().first().onceDate->toSecsSinceEpoch(), past.onceDate->toSecsSinceEpoch());
}

TEST_F(ScheduleEditorTest, aMomentThatNobodyChoseIsntStored) {
    open({morning});
    press(u"Edit"_s);
    press(u"Once"_s);
    press(u"Save"_s);
    EXPECT_FALSE(loadSchedules().first().onceDate);
}

TEST_F(ScheduleEditorTest, deletedFromTheSheetTheSheetAndTheLineGo) {
    open({morning, evening});
    press(u"Edit"_s);
    press(u"Delete"_s);
    EXPECT_FALSE(editor()->isShown());
    EXPECT_EQ(loadSchedules(), QList{evening});
    EXPECT_TRUE(syncs({evening}));
    EXPECT_EQ(names(), QStringList(u"Scheduled run"_s));
    EXPECT_TRUE(buttonNamed(*view, u"New"_s)->hasFocus());
}

TEST_F(ScheduleEditorTest, whatRanWhileItWasEditedStaysRun) {
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

TEST_F(ScheduleEditorTest, theSmallestWindowHoldsTheSheetAtAnySizeOfText) {
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

TEST_F(ScheduleEditorTest, everyControlOfTheSheetHasAName) {
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
