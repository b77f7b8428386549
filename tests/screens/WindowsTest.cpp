#include "screens/Windows.h"

#include "pages/PageStore.h"
#include "records/Memory.h"
#include "screens/AppFixture.h"
#include "screens/Label.h"
#include "screens/MainWindow.h"
#include "screens/PageList.h"
#include "screens/PageListView.h"
#include "screens/PageView.h"
#include "screens/ScheduleListView.h"
#include "screens/SettingsView.h"
#include "screens/Style.h"

#include <QApplication>
#include <QMenuBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

class WindowsTest : public AppFixture {
protected:
    QMenu *menu() const { return window.menuBar()->actions().first()->menu(); }

    /// The menu as it is read: each entry with its keys.
    QStringList entries() const {
        QStringList texts;
        for (const QAction *action : menu()->actions()) {
            if (!action->isSeparator())
                texts.append(action->text() + u' ' + action->shortcut().toString());
        }
        return texts;
    }

    QWidget *opened(QStringView id) {
        window.windows().open(id);
        QWidget *side = window.windows().window(id);
        EXPECT_TRUE(side && QTest::qWaitForWindowActive(side));
        return side;
    }

    static bool closes(QWidget *side) {
        const QPointer<QWidget> watched(side);
        side->close();
        return eventually([&] { return !watched; });
    }

    QPalette colorsBefore = QApplication::palette();
    QFont fontBefore = QApplication::font();
    MainWindow window{app, clock};

    ~WindowsTest() override {
        QApplication::setPalette(colorsBefore);
        QApplication::setFont(fontBefore);
    }
};

} // namespace

TEST_F(WindowsTest, theMenuOffersWhatThereIs) {
    EXPECT_EQ(entries(),
              (QStringList{u"New Chat Ctrl+N"_s, u"Scheduled Runs… Ctrl+Shift+S"_s, u"Pages… Ctrl+Shift+P"_s,
                           u"Settings… Ctrl+,"_s, u"Close Window Ctrl+W"_s, u"Quit Ctrl+Q"_s}));
}

TEST_F(WindowsTest, theKeysOpenTheWindows) {
    present(window);
    EXPECT_FALSE(window.windows().window(windowid::schedules));
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&window, Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_TRUE(window.windows().window(windowid::schedules));
    EXPECT_EQ(window.windows().window(windowid::schedules)->windowTitle(), u"Scheduled Runs"_s);
    EXPECT_EQ(window.windows().window(windowid::pages)->windowTitle(), u"Pages"_s);
    EXPECT_EQ(window.windows().window(windowid::settings)->windowTitle(), u"Settings"_s);
}

TEST_F(WindowsTest, thereIsOneOfEachAndItComesToTheFront) {
    QWidget *first = opened(windowid::pages);
    opened(windowid::schedules);
    EXPECT_EQ(opened(windowid::pages), first);
    first->showMinimized();
    window.windows().open(windowid::pages);
    EXPECT_FALSE(first->isMinimized());
}

TEST_F(WindowsTest, aClosedOneIsMadeAnew) {
    QWidget *first = opened(windowid::pages);
    ASSERT_TRUE(closes(first));
    EXPECT_FALSE(window.windows().window(windowid::pages));
    EXPECT_TRUE(opened(windowid::pages)->isVisible());
}

TEST_F(WindowsTest, anUnknownNameOpensNothing) {
    window.windows().open(u"elsewhere");
    EXPECT_FALSE(window.windows().window(u"elsewhere"));
}

TEST_F(WindowsTest, theyHaveTheirSizes) {
    const QWidget *settings = opened(windowid::settings);
    EXPECT_EQ(settings->size(), QSize(780, 560));
    EXPECT_EQ(settings->maximumSize(), settings->size()) << "there is no more to see in a larger one";
    QWidget *schedules = opened(windowid::schedules);
    EXPECT_EQ(schedules->minimumSizeHint(), QSize(520, 420));
    QWidget *pages = opened(windowid::pages);
    EXPECT_EQ(pages->minimumSizeHint(), QSize(360, 420));
}

TEST_F(WindowsTest, whereThereIsNothingYetTheySaySo) {
    const auto says = [](QWidget *side, const QString &text) {
        const auto labels = side->findChildren<Label *>();
        return std::any_of(labels.begin(), labels.end(),
                           [&](const Label *label) { return label->text() == text; });
    };
    EXPECT_TRUE(says(opened(windowid::schedules), u"Scheduled Runs"_s));
    EXPECT_TRUE(says(opened(windowid::schedules), u"No scheduled runs yet."_s));
    EXPECT_TRUE(says(opened(windowid::pages), u"Choose a page."_s));
}

TEST_F(WindowsTest, onceEverythingIsDeletedThePagesHoldNothingOfIt) {
    present(window);
    ASSERT_TRUE(reaches<phase::Ready>());
    savePage({QUuid::createUuid(), u"Budget"_s, u"secret"_s, clock.now(), clock.now()});
    QWidget *pages = opened(windowid::pages);
    auto *list = pages->findChild<PageList *>();
    list->setCurrentRow(0);
    ASSERT_TRUE(pages->findChild<PageView *>()->document());
    app.deleteEverything();
    EXPECT_EQ(list->count(), 0);
    EXPECT_FALSE(pages->findChild<PageView *>()->document());
}

TEST_F(WindowsTest, theKeysOfTheMenuWorkInEveryWindow) {
    QWidget *pages = opened(windowid::pages);
    QTest::keyClick(pages, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(window.windows().window(windowid::schedules));
    pages->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(pages));
    const QPointer<QWidget> watched(pages);
    QTest::keyClick(pages, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return !watched; }));
}

TEST_F(WindowsTest, aNewChatBringsTheMainWindowBack) {
    present(window);
    ASSERT_TRUE(reaches<phase::Ready>());
    QWidget *pages = opened(windowid::pages);
    window.close();
    const QUuid before = app.chat().conversation()->id;
    QTest::keyClick(pages, Qt::Key_N, Qt::ControlModifier);
    EXPECT_NE(app.chat().conversation()->id, before);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(WindowsTest, theProgramEndsWithItsLastWindow) {
    window.show();
    window.windows().open(windowid::pages);
    QPointer<QWidget> pages = window.windows().window(windowid::pages);
    bool ranOn = false;
    QTimer::singleShot(0, &window, [&] { window.close(); });
    QTimer::singleShot(100, &window, [&] {
        ranOn = true;
        pages->close();
    });
    QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(ranOn);
}

TEST_F(WindowsTest, whoComesBackFindsWhatAnotherProgramHasWrittenIntoTheMemory) {
    present(window);
    ASSERT_TRUE(reaches<phase::Ready>());
    writeMemory(u"- likes tea"_s);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_EQ(app.memory(), QString());
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(app.memory(), u"- likes tea"_s);
}

TEST_F(WindowsTest, aThemeIsThereInEveryWindowAtOnce) {
    present(window);
    QWidget *pages = opened(windowid::pages);
    QWidget *settings = opened(windowid::settings);
    Settings wanted = app.settings();
    wanted.theme = Theme::pink;
    app.saveSettings(wanted);
    const auto background = [](QWidget *shown) {
        const QImage image = shown->grab().toImage();
        return image.pixel(image.width() - 3, image.height() - 3);
    };
    for (const Theme theme : themes) {
        wanted.theme = theme;
        app.saveSettings(wanted);
        const QRgb expected = paletteOf(theme).background.rgb();
        EXPECT_EQ(background(&window), expected);
        EXPECT_EQ(background(pages), expected);
        EXPECT_EQ(background(settings), expected);
        EXPECT_EQ(pages->grab().toImage().pixel(3, 3), paletteOf(theme).sidebar.rgb());
    }
}

TEST_F(WindowsTest, theyOutliveNeitherTheMainWindowNorItsLook) {
    auto other = std::make_unique<MainWindow>(app, clock);
    other->windows().open(windowid::settings);
    const QPointer<QWidget> settings(other->windows().window(windowid::settings));
    other.reset();
    EXPECT_FALSE(settings);
}
