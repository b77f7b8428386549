#include "screens/Browser.h"
#include "screens/ChatList.h"
#include "screens/ChatScreen.h"
#include "screens/ChatScreens.h"
#include "screens/ChatView.h"
#include "screens/ComposerTextView.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/PagePanel.h"
#include "screens/ScheduleListView.h"
#include "screens/SettingsView.h"
#include "screens/SidebarView.h"
#include "screens/ThinkingDisclosure.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// What a person does who has no mouse: Tab to a control, and Space or Return.
class KeysTest : public ChatScreens {
protected:
    ~KeysTest() override { delete screen; }

    void show(QWidget *widget) {
        delete screen;
        screen = widget;
        screen->resize(1200, 1100);
        present(*screen);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    QWidget *focused() const { return screen->focusWidget() ? screen->focusWidget() : screen.data(); }

    QString nameOfFocus() const {
        QAccessibleInterface *own = QAccessible::queryAccessibleInterface(focused());
        QAccessibleInterface *part = own->focusChild();
        return (part ? part : own)->text(QAccessible::Name);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focused(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }

    /// Presses Tab, or Shift+Tab, until the keyboard is at what has that name.
    void tabTo(const QString &name, Qt::Key key = Qt::Key_Tab) {
        constexpr int most = 60;
        for (int presses = 0; presses < most && nameOfFocus() != name; ++presses)
            press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        ASSERT_EQ(nameOfFocus(), name);
    }

    void tabToAndPress(const QString &name, Qt::Key key) {
        ASSERT_NO_FATAL_FAILURE(tabTo(name));
        press(key);
    }

    template<typename Widget>
    Widget *part() const {
        return screen->findChild<Widget *>();
    }

    QPointer<QWidget> screen;
};

} // namespace

TEST_F(KeysTest, aSuggestionIsSentCopiedAndAskedAgain) {
    engine.answer(Script::reply({u"Hello."_s}));
    show(new ChatScreen(app, look, clock));
    tabToAndPress(suggestions().first(), Qt::Key_Space);
    finishTurn();
    tabToAndPress(u"Copy"_s, Qt::Key_Return);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Hello."_s);
    const auto before = engine.requests().size();
    tabToAndPress(u"Regenerate"_s, Qt::Key_Space);
    finishTurn();
    EXPECT_GT(engine.requests().size(), before);
}

TEST_F(KeysTest, aReplyIsSentAndStopped) {
    engine.answer(Script().content(u"Hel"_s).hold());
    show(new ChatScreen(app, look, clock));
    QTest::keyClicks(part<ComposerTextView>(), u"Hi"_s);
    tabToAndPress(u"Send message"_s, Qt::Key_Space);
    ASSERT_TRUE(eventually([this] { return app.chat().streamingID().has_value(); }));
    tabToAndPress(u"Stop generating"_s, Qt::Key_Return);
    finishTurn();
}

TEST_F(KeysTest, everyQuestionOnACardIsAnswered) {
    for (const auto &[answer, choice] : {std::pair(u"Search"_s, PermissionChoice::allow),
                                         std::pair(u"Always allow"_s, PermissionChoice::always),
                                         std::pair(u"Don't search"_s, PermissionChoice::deny)}) {
        show(asking(u"tea"_s));
        QSignalSpy answers(part<MessageList>(), &MessageList::searchAnswered);
        tabToAndPress(answer, Qt::Key_Space);
        ASSERT_EQ(answers.size(), 1);
        EXPECT_EQ(answers.first().first().value<PermissionChoice>(), choice);
    }
    for (const auto &[answer, isYes] : {std::pair(u"Yes"_s, true), std::pair(u"No"_s, false)}) {
        show(asking(std::nullopt));
        QSignalSpy answers(part<MessageList>(), &MessageList::pageAnswered);
        tabToAndPress(answer, Qt::Key_Return);
        ASSERT_EQ(answers.size(), 1);
        EXPECT_EQ(answers.first().first().toBool(), isYes);
    }
    for (const auto &[answer, isYes] : {std::pair(u"Remember"_s, true), std::pair(u"Not now"_s, false)}) {
        show(cards());
        QSignalSpy answers(part<MessageList>(), &MessageList::memoryAnswered);
        tabToAndPress(answer, Qt::Key_Space);
        ASSERT_EQ(answers.size(), 1);
        EXPECT_EQ(answers.first().first().toBool(), isYes);
    }
}

TEST_F(KeysTest, whatBelongsToEarlierRepliesIsOpened) {
    Browser browser;
    show(cards());
    QSignalSpy opened(part<MessageList>(), &MessageList::pageOpened);
    QSignalSpy retried(part<MessageList>(), &MessageList::pageRetried);
    // From row to row, each of which Tab leads through.
    tabTo(u"Remember"_s);
    for (int row = 0; row < 3; ++row)
        press(Qt::Key_Up);
    tabToAndPress(u"[1] How much caffeine is in tea?"_s, Qt::Key_Return);
    EXPECT_EQ(browser.opened, QList<QUrl>{QUrl(u"https://tea.example/caffeine"_s)});
    press(Qt::Key_Down);
    tabToAndPress(u"Caffeine in hot drinks"_s, Qt::Key_Space);
    EXPECT_EQ(opened.size(), 1);
    press(Qt::Key_Down);
    tabToAndPress(u"Try again"_s, Qt::Key_Space);
    EXPECT_EQ(retried.size(), 1);
}

TEST_F(KeysTest, theThinkingIsFoldedAndUnfolded) {
    show(chat());
    const ThinkingDisclosure *thinking = nullptr;
    tabTo(u"Thinking"_s);
    for (const ThinkingDisclosure *each : screen->findChildren<ThinkingDisclosure *>()) {
        if (each->isAncestorOf(focused()))
            thinking = each;
    }
    ASSERT_TRUE(thinking);
    press(Qt::Key_Space);
    EXPECT_EQ(thinking->stage(), ThinkingStage::hidden);
    press(Qt::Key_Return);
    tabToAndPress(u"Show all of the thinking"_s, Qt::Key_Space);
    EXPECT_EQ(thinking->stage(), ThinkingStage::expanded);
}

TEST_F(KeysTest, chatsAreOpenedRenamedAndDeleted) {
    show(sidebar());
    const QUuid first = app.chat().conversation()->id;
    while (!part<ChatList>()->hasFocus())
        press(Qt::Key_Tab);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    const QUuid second = app.chat().conversation()->id;
    EXPECT_NE(second, first);
    while (!part<ChatList>()->hasFocus())
        press(Qt::Key_Tab);
    press(Qt::Key_F2);
    QTest::keyClicks(focused(), u"Tea"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(app.chat().conversation()->title, u"Tea"_s);
    while (!part<ChatList>()->hasFocus())
        press(Qt::Key_Tab);
    press(Qt::Key_F10, Qt::ShiftModifier);
    auto *menu = part<ChatList>()->findChild<QMenu *>();
    ASSERT_TRUE(menu);
    QTest::keyClick(menu, Qt::Key_Up);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_FALSE(ChatStore().load(second));
}

TEST_F(KeysTest, theSidebarAndTheComposerAreWorked) {
    show(sidebar());
    const QUuid before = app.chat().conversation()->id;
    tabToAndPress(u"New Chat"_s, Qt::Key_Space);
    EXPECT_NE(app.chat().conversation()->id, before);
    QSignalSpy settings(part<SidebarView>(), &SidebarView::settingsRequested);
    tabToAndPress(u"Settings"_s, Qt::Key_Return);
    EXPECT_EQ(settings.size(), 1);
    tabToAndPress(u"Offline Mode"_s, Qt::Key_Space);
    EXPECT_EQ(app.settings().searchMode, SearchMode::always);
    tabToAndPress(u"Response speed"_s, Qt::Key_Space);
    EXPECT_EQ(app.settings().responseSpeed, ResponseSpeed::calm);
    tabToAndPress(u"Think longer"_s, Qt::Key_Return);
    EXPECT_EQ(part<ChatScreen>()->thinkMode(), ThinkMode::nextReply);
    tabToAndPress(u"Attach a file"_s, Qt::Key_Space);
    auto *dialog = part<QFileDialog>();
    ASSERT_TRUE(dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(KeysTest, aPageBesideTheChatIsSavedAndClosed) {
    show(withPage());
    tabToAndPress(u"Save as PDF"_s, Qt::Key_Space);
    auto *dialog = part<QFileDialog>();
    ASSERT_TRUE(dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
    tabToAndPress(u"Close"_s, Qt::Key_Return);
    EXPECT_FALSE(app.chat().pageDraft());
    show(withPage());
    tabToAndPress(u"Save"_s, Qt::Key_Space);
    EXPECT_FALSE(app.chat().pageDraft());
}

TEST_F(KeysTest, aScheduleIsWrittenChangedAndDeleted) {
    show(new ScheduleListView(app, look, clock));
    tabToAndPress(u"New"_s, Qt::Key_Space);
    tabTo(u"Name"_s);
    QTest::keyClicks(focused(), u"Tea"_s);
    tabTo(u"Prompt"_s);
    QTest::keyClicks(focused(), u"What is new?"_s);
    tabTo(u"Daily"_s);
    press(Qt::Key_Right);
    tabToAndPress(u"Tuesday"_s, Qt::Key_Space);
    tabToAndPress(u"Run even when Ostrelin is closed"_s, Qt::Key_Space);
    tabToAndPress(u"Save"_s, Qt::Key_Space);
    ASSERT_EQ(app.scheduler().schedules().size(), 1);
    const Schedule written = app.scheduler().schedules().first();
    EXPECT_EQ(written.title, u"Tea"_s);
    EXPECT_EQ(written.prompt, u"What is new?"_s);
    EXPECT_EQ(written.weekdays, QList<qint64>{3});
    EXPECT_TRUE(written.runInBackground);
    tabToAndPress(u"Tea"_s, Qt::Key_Space);
    EXPECT_FALSE(app.scheduler().schedules().first().enabled);
    tabToAndPress(u"Edit"_s, Qt::Key_Return);
    tabToAndPress(u"Delete"_s, Qt::Key_Space);
    EXPECT_TRUE(app.scheduler().schedules().isEmpty());
}

TEST_F(KeysTest, theSettingsAreChanged) {
    show(new SettingsView(app, look));
    tabTo(displayName(app.settings().theme));
    const Theme before = app.settings().theme;
    press(Qt::Key_Right);
    EXPECT_NE(app.settings().theme, before);
    tabTo(u"Appearance"_s);
    press(Qt::Key_Down);
    tabToAndPress(u"Remember things"_s, Qt::Key_Space);
    EXPECT_FALSE(app.settings().memoryEnabled);
    tabTo(u"Memory"_s);
    press(Qt::Key_End);
    press(Qt::Key_Up);
    tabToAndPress(u"Delete all my data related to Ostrelin (including my downloaded LLMs)"_s, Qt::Key_Space);
    EXPECT_EQ(nameOfFocus(), u"Cancel"_s);
    press(Qt::Key_Escape);
    tabTo(u"Data"_s);
}
