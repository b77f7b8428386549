#include "screens/OnboardingFixture.h"
#include "screens/TextView.h"

using namespace Qt::StringLiterals;

class WhySizeTest : public OnboardingFixture {
protected:
    void open() {
        download();
        button(u"Why this size?"_s)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(view.focusWidget(), Qt::Key_Return);
        ASSERT_TRUE(app.showsWhySize());
        ASSERT_TRUE(sheet()->isVisible());
    }
};

TEST_F(WhySizeTest, itTellsWhyInTwoParagraphs) {
    open();
    QStringList paragraphs;
    for (const TextView *text : sheet()->findChildren<TextView *>())
        paragraphs.append(text->text());
    EXPECT_EQ(paragraphs,
              (QStringList{u"Ostrelin picked a local AI model that fits this Mac's memory, so it can run on "
                           "the GPU instead of swapping to disk."_s,
                           u"Local AI models are small models that do all of the AI computation directly on "
                           "your device. It's completely free and totally private."_s}));
    EXPECT_EQ(spokenName(sheet()), u"Why this size?"_s);
    EXPECT_EQ(spokenRole(sheet()), QAccessible::Dialog);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(sheet())->state().modal);
}

TEST_F(WhySizeTest, itHasTheFocusAndKeepsIt) {
    open();
    QPushButton *close = buttonNamed(*sheet(), u"Close"_s);
    EXPECT_TRUE(close->hasFocus());
    for (const auto key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab}) {
        QTest::keyClick(view.focusWidget(), key);
        EXPECT_TRUE(close->hasFocus());
    }
}

TEST_F(WhySizeTest, closeTakesItAwayAndGivesTheFocusBack) {
    open();
    click(buttonNamed(*sheet(), u"Close"_s));
    EXPECT_FALSE(app.showsWhySize());
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_TRUE(button(u"Why this size?"_s)->hasFocus());
}

TEST_F(WhySizeTest, escapeTakesItAway) {
    open();
    QTest::keyClick(view.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(app.showsWhySize());
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_TRUE(button(u"Why this size?"_s)->hasFocus());
}

TEST_F(WhySizeTest, whatLiesBehindIsOutOfTheMousesReach) {
    open();
    const QWidget *pause = button(u"Pause"_s);
    const QPoint place = pause->mapTo(&view, pause->rect().center());
    EXPECT_TRUE(sheet() == view.childAt(place) || sheet()->isAncestorOf(view.childAt(place)));
    QTest::mouseClick(view.childAt(place), Qt::LeftButton);
    EXPECT_FALSE(app.isDownloadPaused());
}

TEST_F(WhySizeTest, itCoversAWindowThatGrows) {
    open();
    view.resize(1200, 900);
    EXPECT_EQ(sheet()->size(), QSize(1200, 900));
    EXPECT_NEAR(sheet()->page().center().x(), 600, 1);
    EXPECT_NEAR(sheet()->page().center().y(), 450, 1);
}

TEST_F(WhySizeTest, aChangeOfPhaseBehindItLeavesTheFocusOnIt) {
    open();
    show(phase::Error{u"x"_s, false});
    EXPECT_TRUE(buttonNamed(*sheet(), u"Close"_s)->hasFocus());
    click(buttonNamed(*sheet(), u"Close"_s));
    EXPECT_TRUE(button(u"Try again"_s)->hasFocus());
}

TEST_F(WhySizeTest, whoeverChatsHasStoppedToWonder) {
    app.setShowsWhySize(true);
    EXPECT_TRUE(sheet()->isVisible());
    start();
    EXPECT_FALSE(app.showsWhySize());
    EXPECT_FALSE(sheet()->isShown());
}
