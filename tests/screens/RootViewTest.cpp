#include "screens/RootView.h"

#include "screens/AppFixture.h"
#include "screens/ChatView.h"
#include "screens/ComposerTextView.h"
#include "screens/HouseStyle.h"
#include "screens/MainWindow.h"
#include "screens/OnboardingView.h"
#include "screens/Style.h"

#include <QMenuBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class RootViewTest : public AppFixture {
protected:
    bool isReady() const { return isIn<phase::Ready>(app.phase()); }
};

} // namespace

TEST_F(RootViewTest, theStartBeginsOnceTheViewHasAppeared) {
    StillLook look;
    RootView root(app, look, clock);
    QSignalSpy phases(&app, &AppState::phaseChanged);
    letPass(20);
    EXPECT_EQ(phases.count(), 0);
    EXPECT_FALSE(root.chatView());
    root.show();
    ASSERT_TRUE(eventually([this] { return isReady(); }));
    ASSERT_TRUE(root.chatView());
    EXPECT_TRUE(root.chatView()->isVisible());
    EXPECT_FALSE(root.findChild<OnboardingView *>()->isVisible());
}

TEST_F(RootViewTest, theChatIsThereExactlyWhileTheProgramIsReady) {
    StillLook look;
    RootView root(app, look, clock);
    root.show();
    const auto *onboarding = root.findChild<OnboardingView *>();
    const auto agrees = [&] {
        const bool chats = root.chatView() && root.chatView()->isVisible();
        return chats == isReady() && onboarding->isVisible() == !isReady();
    };
    int phases = 0;
    QObject::connect(&app, &AppState::phaseChanged, &root, [&] {
        ++phases;
        EXPECT_TRUE(agrees()) << app.phase().index();
    });
    ASSERT_TRUE(reaches<phase::Ready>());
    app.deleteEverything();
    app.finishWelcome();
    ASSERT_TRUE(reaches<phase::Downloading>());
    EXPECT_GE(phases, 4);
}

TEST_F(RootViewTest, withoutAnEngineTheErrorStandsAndMayBeTriedAgain) {
    const EnvironmentVariable noAddress("OSTRELIN_ENGINE_URL", "");
    const EnvironmentVariable noServer("OSTRELIN_LLAMA_SERVER", "/nonexistent");
    StillLook look;
    RootView root(app, look, clock);
    root.show();
    ASSERT_TRUE(eventually([this] { return isIn<phase::Error>(app.phase()); }));
    EXPECT_TRUE(root.findChild<OnboardingView *>()->isVisible());
    const EnvironmentVariable addressAgain("OSTRELIN_ENGINE_URL", engine.url().toString().toUtf8());
    click(buttonNamed(root, u"Try again"_s));
    ASSERT_TRUE(eventually([this] { return isReady(); }));
    EXPECT_TRUE(root.chatView()->isVisible());
}

TEST_F(RootViewTest, theWindowHasItsSizes) {
    MainWindow window(app, clock);
    EXPECT_EQ(window.size(), QSize(1040, 760));
    EXPECT_EQ(window.centralWidget()->minimumSize(), QSize(760, 520));
    EXPECT_EQ(window.windowTitle(), u"Ostrelin"_s);
}

TEST_F(RootViewTest, theWindowComesToTheFrontAgain) {
    MainWindow window(app, clock);
    present(window);
    window.close();
    EXPECT_FALSE(window.isVisible());
    window.comeToFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    window.showMinimized();
    window.comeToFront();
    EXPECT_FALSE(window.isMinimized());
}

TEST_F(RootViewTest, theDesktopsTokenIsThereForTheActivation) {
    const EnvironmentVariable noToken("XDG_ACTIVATION_TOKEN", "");
    MainWindow window(app, clock);
    window.comeToFront(u"the token"_s);
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "the token");
}

TEST_F(RootViewTest, controlNStartsANewChatOnceThereIsAChat) {
    MainWindow window(app, clock);
    QAction *newChat = window.menuBar()->actions().first()->menu()->actions().first();
    EXPECT_EQ(newChat->text(), u"New Chat"_s);
    EXPECT_FALSE(newChat->isEnabled());
    present(window);
    ASSERT_TRUE(eventually([this] { return isReady(); }));
    EXPECT_TRUE(newChat->isEnabled());
    EXPECT_TRUE(qobject_cast<ComposerTextView *>(window.focusWidget()));
    const QUuid before = app.chat().conversation()->id;
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_NE(app.chat().conversation()->id, before);
}

TEST_F(RootViewTest, theFirstPictureHasThePersonsOwnColors) {
    const QPalette before = QApplication::palette();
    Settings settings = loadSettings();
    settings.theme = Theme::softGreen;
    saveSettings(settings);
    MainWindow window(app, clock);
    EXPECT_EQ(window.look().theme(), Theme::softGreen);
    EXPECT_EQ(window.grab().toImage().pixel(500, 700), paletteOf(Theme::softGreen).background.rgb());
    QApplication::setPalette(before);
}

TEST_F(RootViewTest, menusAndScrollBarsAreDrawnInTheHousesStyle) {
    HouseStyle houseStyle;
    EXPECT_EQ(houseStyle.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, nullptr), style::scrollBar);
}
