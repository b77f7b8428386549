#include "screens/ChatView.h"

#include "records/ChatStore.h"
#include "screens/AppFixture.h"
#include "screens/ChatList.h"
#include "screens/ChatScreen.h"
#include "screens/ComposerTextView.h"
#include "screens/MainWindow.h"
#include "screens/Placement.h"
#include "screens/RenameSheet.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"
#include "screens/SuggestionButton.h"
#include "screens/TextField.h"

#include <QMenu>
#include <QSplitter>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ChatViewTest : public AppFixture {
protected:
    ChatViewTest() : view((start(), app), look, clock) {
        view.resize(style::windowWidth, style::windowHeight);
        present(view);
    }

    QUuid addChat(const QString &title) {
        const Conversation chat = newConversation(clock.now().addSecs(-60), title);
        ChatStore().save(chat);
        app.chat().reloadSummaries();
        return chat.id;
    }

    ConversationSummary summary(const QUuid &id) {
        for (const ConversationSummary &each : app.chat().summaries()) {
            if (each.id == id)
                return each;
        }
        return {};
    }

    void askForTitle(const QUuid &id) { Q_EMIT list()->renameRequested(summary(id)); }

    bool composerHasFocus() const { return qobject_cast<ComposerTextView *>(view.focusWidget()); }

    ChatList *list() const { return view.findChild<ChatList *>(); }
    RenameSheet *sheet() const { return view.findChild<RenameSheet *>(); }
    TextField *field() const { return view.findChild<TextField *>(); }
    QPushButton *button(const QString &name) const { return buttonNamed(view, name); }

    StillLook look;
    ChatView view;
};

/// Drags the edge beside the sidebar.
void drag(const ChatView &view, int distance) {
    auto *edge = view.findChild<QSplitter *>()->handle(1);
    const QPoint start = edge->rect().center();
    QTest::mousePress(edge, Qt::LeftButton, {}, start);
    QTest::mouseMove(edge, start + QPoint(distance, 0));
    QTest::mouseRelease(edge, Qt::LeftButton, {}, start + QPoint(distance, 0));
}

} // namespace

TEST_F(ChatViewTest, theSidebarStandsBesideTheChat) {
    EXPECT_EQ(view.sidebar()->width(), 248);
    EXPECT_EQ(view.screen()->x(), 249);
    EXPECT_EQ(view.screen()->width(), 1040 - 249);
    EXPECT_EQ(view.grab().toImage().pixel(3, 300), look.palette().sidebar.rgb());
}

TEST_F(ChatViewTest, aWiderWindowIsForTheChat) {
    view.resize(1600, 900);
    EXPECT_EQ(view.sidebar()->width(), 248);
}

TEST_F(ChatViewTest, bothAreThereInTheSmallestWindow) {
    view.resize(style::contentMinimumWidth, style::contentMinimumHeight);
    for (const int distance : {1000, -1000}) {
        drag(view, distance);
        EXPECT_EQ(view.sidebar()->width(),
                  distance > 0 ? style::sidebarMaximumWidth : style::sidebarMinimumWidth);
        EXPECT_GE(view.screen()->width(), style::chatMinimumWidth);
        EXPECT_EQ(view.screen()->geometry().right(), view.rect().right());
        for (const SuggestionButton *card : view.findChildren<SuggestionButton *>())
            EXPECT_TRUE(
                view.screen()->rect().contains(QRect(card->mapTo(view.screen(), QPoint()), card->size())));
    }
}

TEST_F(ChatViewTest, theSidebarKeepsItsWidth) {
    drag(view, 40);
    const int width = view.sidebar()->width();
    EXPECT_GT(width, style::sidebarWidth);
    view.hide();
    EXPECT_EQ(loadSidebarWidth(), width);
    ChatView other(app, look, clock);
    other.resize(1400, 900);
    other.show();
    EXPECT_EQ(other.sidebar()->width(), width);
}

TEST_F(ChatViewTest, aWidthThatMakesNoSenseIsMended) {
    for (const auto &[saved, shown] :
         {std::pair(-5, style::sidebarMinimumWidth), {100'000, style::sidebarMaximumWidth}}) {
        saveSidebarWidth(saved);
        ChatView other(app, look, clock);
        other.resize(style::windowWidth, style::windowHeight);
        other.show();
        EXPECT_EQ(other.sidebar()->width(), shown);
    }
}

TEST_F(ChatViewTest, whoOpensAChatCanWriteAtOnce) {
    const QUuid id = addChat(u"Morning"_s);
    const auto openByKeys = [&] {
        list()->setFocus(Qt::TabFocusReason);
        list()->setCurrentIndex(list()->indexAt(list()->frameOf(id).center()));
        QTest::keyClick(list(), Qt::Key_Return);
    };
    openByKeys();
    EXPECT_EQ(app.chat().conversation()->id, id);
    EXPECT_TRUE(composerHasFocus());
    openByKeys();
    EXPECT_TRUE(composerHasFocus()) << "also where it is the open one already";
    click(button(u"New Chat"_s));
    EXPECT_TRUE(composerHasFocus());
}

TEST_F(ChatViewTest, aChatIsRenamed) {
    const QUuid id = addChat(u"Morning"_s);
    askForTitle(id);
    ASSERT_TRUE(sheet()->isVisible());
    EXPECT_EQ(spokenName(sheet()), u"Rename"_s);
    EXPECT_EQ(spokenRole(sheet()), QAccessible::Dialog);
    EXPECT_EQ(spokenName(field()), u"Title"_s);
    EXPECT_EQ(field()->text(), u"Morning"_s);
    EXPECT_TRUE(field()->hasFocus());
    EXPECT_EQ(field()->selectedText(), u"Morning"_s) << "to be written over";
    QTest::keyClicks(field(), u"  Evening plans "_s);
    click(button(u"Save"_s));
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_EQ(ChatStore().load(id)->title, u"Evening plans"_s);
    EXPECT_EQ(summary(id).title, u"Evening plans"_s);
}

TEST_F(ChatViewTest, returnSavesAndTheFocusGoesBack) {
    const QUuid id = addChat(u"Morning"_s);
    list()->setFocus(Qt::TabFocusReason);
    askForTitle(id);
    QTest::keyClicks(field(), u"Evening"_s);
    QTest::keyClick(field(), Qt::Key_Return);
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_EQ(summary(id).title, u"Evening"_s);
    EXPECT_TRUE(list()->showsFocus());
}

TEST_F(ChatViewTest, anEmptyTitleLeavesTheOldOne) {
    const QUuid id = addChat(u"Morning"_s);
    const ConversationSummary before = summary(id);
    for (const QString &title : {QString(), u"  \t "_s}) {
        askForTitle(id);
        field()->setText(title);
        click(button(u"Save"_s));
        EXPECT_FALSE(sheet()->isVisible());
        EXPECT_EQ(summary(id), before);
    }
}

TEST_F(ChatViewTest, theSameTitleLeavesTheChatInItsPlace) {
    for (const QString &title : {u"Morning"_s, u"  Morning\nsun "_s}) {
        const QUuid id = addChat(title);
        const ConversationSummary before = summary(id);
        clock.advance(1h);
        askForTitle(id);
        click(button(u"Save"_s));
        EXPECT_FALSE(sheet()->isVisible());
        EXPECT_EQ(summary(id), before);
    }
}

TEST_F(ChatViewTest, cancelAndEscapeChangeNothing) {
    const QUuid id = addChat(u"Morning"_s);
    const ConversationSummary before = summary(id);
    askForTitle(id);
    QTest::keyClicks(field(), u"Evening"_s);
    click(button(u"Cancel"_s));
    EXPECT_FALSE(sheet()->isVisible());
    askForTitle(id);
    EXPECT_EQ(field()->text(), u"Morning"_s);
    QTest::keyClicks(field(), u"Evening"_s);
    QTest::keyClick(field(), Qt::Key_Escape);
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_EQ(summary(id), before);
}

TEST_F(ChatViewTest, whileItAsksTheKeyboardStaysWithIt) {
    askForTitle(addChat(u"Morning"_s));
    QStringList stops;
    for (int stop = 0; stop < 4; ++stop) {
        stops.append(spokenName(view.focusWidget()));
        QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (QStringList{u"Title"_s, u"Cancel"_s, u"Save"_s, u"Title"_s}));
}

TEST_F(ChatViewTest, theOpenChatsNewTitleIsOverTheChat) {
    const QUuid id = app.chat().conversation()->id;
    askForTitle(id);
    field()->setText(u"Plans"_s);
    click(button(u"Save"_s));
    EXPECT_EQ(view.screen()->model().title, u"Plans"_s);
}

TEST_F(ChatViewTest, theFocusIsInTheComposerWhereverAnotherChatCameFrom) {
    const QUuid id = addChat(u"Morning"_s);
    const auto chatComes = [&](auto open) {
        button(u"Settings"_s)->setFocus(Qt::TabFocusReason);
        open();
        EXPECT_TRUE(composerHasFocus());
    };
    chatComes([&] { app.chat().openConversation(id); });
    chatComes([&] { app.chat().newChat(); });
}

TEST_F(ChatViewTest, aScheduleThatRunsLeavesTheTitleToWhoWritesIt) {
    const QUuid id = addChat(u"Morning"_s);
    askForTitle(id);
    QTest::keyClicks(field(), u"Even"_s);
    const QUuid before = app.chat().conversation()->id;
    engine.answer(Script().content(u"Sun"_s).done());
    app.scheduler().run({.id = QUuid::createUuid(), .prompt = u"Weather?"_s});
    ASSERT_NE(app.chat().conversation()->id, before);
    EXPECT_TRUE(sheet()->isVisible());
    QTest::keyClicks(view.focusWidget(), u"ing"_s);
    EXPECT_EQ(field()->text(), u"Evening"_s);
    click(button(u"Save"_s));
    EXPECT_EQ(summary(id).title, u"Evening"_s);
}

TEST_F(ChatViewTest, aReplyThatIsWrittenLeavesTheQuestion) {
    askForTitle(app.chat().conversation()->id);
    engine.answer(Script().content(u"Hel"_s).hold());
    app.chat().send(u"Hi"_s);
    ASSERT_TRUE(eventually([this] { return view.screen()->model().rows.value(1).text == u"Hel"_s; }));
    EXPECT_TRUE(sheet()->isVisible());
    EXPECT_TRUE(field()->hasFocus());
}

TEST_F(ChatViewTest, aViewThatGoesTakesItsQuestionAlong) {
    askForTitle(addChat(u"Morning"_s));
    view.hide();
    view.show();
    EXPECT_FALSE(sheet()->isVisible());
}

namespace {

class PlacementTest : public AppFixture {
protected:
    ~PlacementTest() override {
        QApplication::setPalette(colorsBefore);
        QApplication::setFont(fontBefore);
    }

    QPalette colorsBefore = QApplication::palette();
    QFont fontBefore = QApplication::font();
};

} // namespace

TEST_F(PlacementTest, beforeTheFirstStartThereIsNone) {
    EXPECT_TRUE(loadWindowGeometry().isEmpty());
    EXPECT_EQ(loadSidebarWidth(), std::nullopt);
}

TEST_F(PlacementTest, theWindowKeepsItsSize) {
    {
        MainWindow window(app, clock);
        present(window);
        window.resize(900, 640);
        window.close();
    }
    MainWindow window(app, clock);
    EXPECT_EQ(window.size(), QSize(900, 640));
}

TEST_F(PlacementTest, whatIsDamagedIsForgotten) {
    saveWindowGeometry("no geometry");
    const MainWindow window(app, clock);
    EXPECT_EQ(window.size(), QSize(1040, 760));
}

TEST_F(PlacementTest, whereNothingCanBeWrittenTheWindowClosesAllTheSame) {
    const EnvironmentVariable nowhere("XDG_CONFIG_HOME", "/dev/null/nowhere");
    MainWindow window(app, clock);
    present(window);
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(loadWindowGeometry().isEmpty());
}

TEST_F(PlacementTest, theGearOpensTheSettings) {
    MainWindow window(app, clock);
    present(window);
    ASSERT_TRUE(reaches<phase::Ready>());
    click(buttonNamed(window, u"Settings"_s));
    EXPECT_TRUE(window.windows().window(windowid::settings));
}

TEST_F(ChatViewTest, theArrowKeysMoveTheEdgeOfTheSidebar) {
    QWidget *edge = view.findChild<QSplitter *>()->handle(1);
    EXPECT_EQ(spokenName(edge), u"Width of the sidebar"_s);
    edge->setFocus(Qt::TabFocusReason);
    QTest::keyClick(edge, Qt::Key_Right);
    EXPECT_EQ(view.sidebar()->width(), 248 + 16);
    const QPoint middle = edge->geometry().center();
    EXPECT_EQ(view.grab().toImage().pixel(middle), look.palette().accent.rgb()) << "it is seen";
    for (int press = 0; press < 20; ++press)
        QTest::keyClick(edge, Qt::Key_Left);
    EXPECT_EQ(view.sidebar()->width(), style::sidebarMinimumWidth);
    QTest::keyClick(edge, Qt::Key_Right);
    EXPECT_EQ(view.sidebar()->width(), style::sidebarMinimumWidth + 16);
}
