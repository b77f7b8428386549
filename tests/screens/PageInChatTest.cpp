#include "pages/PageStore.h"
#include "records/Folders.h"
#include "screens/AppFixture.h"
#include "screens/ChatColumns.h"
#include "screens/ChatScreen.h"
#include "screens/ChatView.h"
#include "screens/ComposerTextView.h"
#include "screens/InspectorColumn.h"
#include "screens/PagePanel.h"
#include "screens/PageView.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"
#include "screens/Toast.h"

#include <QDir>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// The panel beside the chat, from a page's card to the disk.
class PageInChatTest : public AppFixture {
protected:
    PageInChatTest() : view((start(), app), look, clock) {
        view.setMinimumSize(style::contentMinimumWidth, style::contentMinimumHeight);
        view.resize(1800, 900);
        present(view);
    }

    void openPage() { app.chat().openPage({u"Tea"_s, u"# Tea\nGreen."_s}); }

    PagePanel *panel() const { return view.findChild<PagePanel *>(); }
    InspectorColumn *inspector() const { return view.findChild<InspectorColumn *>(); }
    QPushButton *button(const QString &name) const { return buttonNamed(view, name); }
    bool composerHasFocus() const { return qobject_cast<ComposerTextView *>(view.focusWidget()); }

    /// How wide the panel is beside how wide a chat.
    QSize widthsAt(int width) {
        view.resize(width, 700);
        QCoreApplication::processEvents();
        return {panel()->width(), view.screen()->width()};
    }

    static constexpr int sidebarEdge = 1;
    static constexpr int panelEdge = 2;
    void drag(int number, int distance) {
        auto *edge = view.findChild<ChatColumns *>()->handle(number);
        const QPoint start = edge->rect().center();
        QTest::mousePress(edge, Qt::LeftButton, {}, start);
        QTest::mouseMove(edge, start + QPoint(distance, 0));
        QTest::mouseRelease(edge, Qt::LeftButton, {}, start + QPoint(distance, 0));
    }

    Look look;
    ChatView view;
};

class StillPageInChatTest : public PageInChatTest {
protected:
    StillPageInChatTest() { look.setMotion(Motion::reduced); }
};

} // namespace

TEST_F(StillPageInChatTest, thePanelStandsWhileThereIsADraft) {
    EXPECT_FALSE(panel()->isVisible());
    openPage();
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(panel()->width(), 900);
    EXPECT_EQ(view.screen()->width(), 1800 - 248 - 900 - 2 * style::hairline);
    app.chat().closePageDraft();
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(view.screen()->width(), 1800 - 248 - style::hairline);
}

TEST_F(StillPageInChatTest, itTakesWhatTheChatCanSpare) {
    openPage();
    EXPECT_EQ(widthsAt(1400).height(), style::chatMinimumWidth);
    EXPECT_EQ(widthsAt(1400).width(), 1400 - 248 - 380 - 2);
    EXPECT_EQ(widthsAt(2600).width(), 900) << "and no more than it wants";
}

TEST_F(StillPageInChatTest, inASmallWindowTheSidebarMakesWay) {
    openPage();
    EXPECT_EQ(widthsAt(760), QSize(760 - 380 - 1, 380));
    EXPECT_FALSE(view.sidebar()->isVisible());
    app.chat().closePageDraft();
    EXPECT_TRUE(view.sidebar()->isVisible());
    EXPECT_EQ(view.sidebar()->width(), 248);
}

TEST_F(StillPageInChatTest, theSidebarIsBackInAWindowThatHasRoomForAll) {
    openPage();
    widthsAt(760);
    const QSize widths = widthsAt(1100);
    EXPECT_TRUE(view.sidebar()->isVisible());
    EXPECT_GE(widths.width(), 320);
    EXPECT_GE(widths.height(), 380);
}

TEST_F(StillPageInChatTest, aWidthThatThePersonGaveStays) {
    openPage();
    drag(panelEdge, 300);
    const int given = panel()->width();
    EXPECT_NEAR(given, 600, 4);
    EXPECT_EQ(widthsAt(1900).width(), given);
    app.chat().closePageDraft();
    openPage();
    EXPECT_EQ(panel()->width(), given);
}

TEST_F(StillPageInChatTest, theSidebarsEdgeGivesThePanelNoWidth) {
    openPage();
    ASSERT_EQ(widthsAt(1300).width(), 1300 - 248 - 380 - 2);
    drag(sidebarEdge, -40);
    EXPECT_NEAR(view.sidebar()->width(), 208, 4);
    EXPECT_EQ(widthsAt(1800).width(), 900) << "what it wants";
}

TEST_F(StillPageInChatTest, thePanelIsAtMostAsWideAsItMayBe) {
    openPage();
    widthsAt(2600);
    drag(panelEdge, -1200);
    EXPECT_EQ(panel()->width(), 1400);
}

TEST_F(StillPageInChatTest, aPanelThatHasGoneKeepsNoPage) {
    openPage();
    EXPECT_TRUE(panel()->findChild<PageView *>()->document());
    app.chat().closePageDraft();
    EXPECT_FALSE(panel()->findChild<PageView *>()->document());
    openPage();
    app.deleteEverything();
    EXPECT_FALSE(panel()->findChild<PageView *>()->document());
}

TEST_F(StillPageInChatTest, whatWasSavedIsSaidToBe) {
    openPage();
    click(button(u"Save"_s));
    EXPECT_EQ(view.findChild<Toast *>()->text(), u"Saved"_s);
}

TEST_F(StillPageInChatTest, whatCouldNotBeSavedIsNot) {
    ensurePagesFolder();
    ASSERT_TRUE(QDir(pagesFolder()).removeRecursively());
    QFile inTheWay(pagesFolder());
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    openPage();
    click(button(u"Save"_s));
    EXPECT_EQ(view.findChild<Toast *>()->text(), QString());
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(StillPageInChatTest, closingLosesThePageAndSavingKeepsIt) {
    openPage();
    click(button(u"Close"_s));
    EXPECT_FALSE(app.chat().pageDraft());
    EXPECT_TRUE(listPages().isEmpty());
    openPage();
    click(button(u"Save"_s));
    EXPECT_FALSE(app.chat().pageDraft());
    ASSERT_EQ(listPages().size(), 1);
    EXPECT_EQ(listPages().first().title, u"Tea"_s);
}

TEST_F(StillPageInChatTest, theFocusGoesToTheComposerWithThePanel) {
    openPage();
    EXPECT_TRUE(composerHasFocus()) << "a page that comes takes nothing from whoever types";
    button(u"Close"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(view.focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_TRUE(composerHasFocus());
}

TEST_F(StillPageInChatTest, anotherChatTakesThePanelAway) {
    openPage();
    app.chat().newChat();
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(StillPageInChatTest, thePagesAreOneClickAway) {
    const QSignalSpy requested(&view, &ChatView::pagesRequested);
    click(button(u"Pages"_s));
    EXPECT_EQ(requested.count(), 1);
}

TEST_F(PageInChatTest, thePanelGlidesInAndOutWithItsPageLaidOnce) {
    QList<int> widths;
    QSet<int> panelWidths;
    struct Watch : QObject {
        std::function<void()> resized;
        bool eventFilter(QObject *, QEvent *event) override {
            if (event->type() == QEvent::Resize)
                resized();
            return false;
        }
    } watch;
    watch.resized = [&] {
        widths.append(inspector()->width());
        panelWidths.insert(panel()->width());
    };
    openPage();
    inspector()->installEventFilter(&watch);
    ASSERT_TRUE(eventually([&] { return inspector()->isSettled() && panel()->width() == 900; }));
    EXPECT_GT(widths.size(), 3) << "it came at once";
    EXPECT_TRUE(std::is_sorted(widths.begin(), widths.end()));
    EXPECT_EQ(panelWidths.values(), QList<int>{900});
    widths.clear();
    app.chat().closePageDraft();
    EXPECT_TRUE(panel()->isVisible()) << "it went at once";
    EXPECT_TRUE(panel()->findChild<PageView *>()->document()) << "a page that goes is seen going";
    ASSERT_TRUE(eventually([&] { return !panel()->isVisible(); }));
    EXPECT_FALSE(panel()->findChild<PageView *>()->document());
    EXPECT_TRUE(std::is_sorted(widths.rbegin(), widths.rend()));
}

TEST_F(PageInChatTest, aPanelThatIsCalledBackOnItsWayOutStays) {
    openPage();
    ASSERT_TRUE(eventually([&] { return inspector()->isSettled() && panel()->width() == 900; }));
    app.chat().closePageDraft();
    letPass(60);
    openPage();
    ASSERT_TRUE(eventually([&] { return inspector()->isSettled(); }));
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(panel()->width(), 900);
}

TEST_F(PageInChatTest, aPanelThatHasGoneComesAgain) {
    view.resize(1040, 760);
    for (int turn = 0; turn < 3; ++turn) {
        openPage();
        ASSERT_TRUE(eventually([&] { return inspector()->isSettled() && panel()->isVisible(); }));
        EXPECT_EQ(panel()->width(), 1040 - 249 - 380 - 1);
        app.chat().closePageDraft();
        ASSERT_TRUE(eventually([&] { return !panel()->isVisible(); }));
        EXPECT_EQ(view.screen()->width(), 1040 - 249);
    }
}

TEST_F(StillPageInChatTest, theArrowKeysMoveTheEdgeOfThePanel) {
    openPage();
    QWidget *edge = view.findChild<ChatColumns *>()->handle(panelEdge);
    EXPECT_EQ(spokenName(edge), u"Width of the page"_s);
    edge->setFocus(Qt::TabFocusReason);
    QTest::keyClick(edge, Qt::Key_Right);
    EXPECT_EQ(panel()->width(), 900 - 16);
    QTest::keyClick(edge, Qt::Key_Left);
    EXPECT_EQ(panel()->width(), 900);
}
