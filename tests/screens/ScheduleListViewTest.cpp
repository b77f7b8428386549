#include "screens/ScheduleListFixture.h"

#include <csignal>

#include <sys/resource.h>

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

using ScheduleListViewTest = ScheduleListFixture;

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

TEST_F(ScheduleListViewTest, theMenuRunsOneNow) {
    engine.answer(Script(200).raw("data: [DONE]\n\n"));
    openReady({morning, evening});
    chooseFromMenu(rows().last(), 0);
    ASSERT_TRUE(eventually([this] { return !told.isEmpty(); }));
    EXPECT_FALSE(loadSchedules().value(0).lastRun);
    EXPECT_TRUE(loadSchedules().value(1).lastRun);
}

TEST_F(ScheduleListViewTest, theMenuOpensTheSheet) {
    open({evening, morning});
    chooseFromMenu(rows().last(), 1);
    ASSERT_TRUE(editor());
    EXPECT_EQ(title()->text(), morning.title);
    EXPECT_EQ(prompt()->writtenText(), morning.prompt);
}

TEST_F(ScheduleListViewTest, nothingRunsBeforeTheChatIsReady) {
    open({morning});
    press(u"Run now"_s);
    chooseFromMenu(rows().first(), 0);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(loadSchedules(), QList{morning});
}
