#include "screens/AppFixture.h"
#include "screens/ComposerTextView.h"
#include "screens/Label.h"
#include "screens/MainWindow.h"
#include "screens/TextView.h"

#include <QApplication>
#include <QMenuBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

/// A running program whose settings change.
class ThemeTest : public AppFixture {
protected:
    ThemeTest() {
        present(window);
        start();
    }
    ~ThemeTest() override {
        QApplication::setPalette(colorsBefore);
        QApplication::setFont(fontBefore);
    }

    template<typename Change>
    void change(Change adjust) {
        Settings settings = app.settings();
        adjust(settings);
        app.saveSettings(settings);
    }

    const QPalette colorsBefore = QApplication::palette();
    const QFont fontBefore = QApplication::font();
    MainWindow window{app, clock};
};

} // namespace

TEST_F(ThemeTest, grayIsTheDefault) {
    EXPECT_EQ(Settings().theme, Theme::gray);
    EXPECT_EQ(window.look().theme(), Theme::gray);
}

TEST_F(ThemeTest, aSwitchFromLightToDarkChangesTheChromeAtOnce) {
    change([](Settings &settings) { settings.theme = Theme::pink; });
    QCoreApplication::processEvents();
    EXPECT_EQ(window.menuBar()->palette().color(QPalette::Window), paletteOf(Theme::pink).background);
    change([](Settings &settings) { settings.theme = Theme::nearBlack; });
    QCoreApplication::processEvents();
    const Palette &palette = paletteOf(Theme::nearBlack);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), palette.background);
    EXPECT_EQ(window.menuBar()->palette().color(QPalette::Window), palette.background);
    EXPECT_EQ(window.menuBar()->palette().color(QPalette::WindowText), palette.ink);
    QMenu menu;
    EXPECT_EQ(menu.palette().color(QPalette::WindowText), palette.ink);
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipText), palette.ink);
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase), palette.sidebar);
    const QImage picture = window.grab().toImage();
    EXPECT_EQ(picture.pixel(3, window.height() - 3), palette.sidebar.rgb());
    EXPECT_EQ(picture.pixel(window.width() - 3, window.height() - 3), palette.background.rgb());
}

TEST_F(ThemeTest, deletingEverythingBringsTheDefaultBack) {
    change([](Settings &settings) { settings.theme = Theme::softGreen; });
    app.deleteEverything();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), paletteOf(Theme::gray).background);
}

TEST_F(ThemeTest, anAppearanceThatIsThereAlreadyIsNotSetAgain) {
    struct Counter : QObject {
        bool eventFilter(QObject *, QEvent *event) override {
            count += event->type() == QEvent::ApplicationPaletteChange;
            return false;
        }
        int count = 0;
    } counter;
    qApp->installEventFilter(&counter);
    change([](Settings &settings) { settings.memoryEnabled = !settings.memoryEnabled; });
    window.look().applyToApplication();
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.count, 0);
    change([](Settings &settings) { settings.theme = Theme::pink; });
    QCoreApplication::processEvents();
    EXPECT_GT(counter.count, 0);
}

TEST_F(ThemeTest, everyTextFollowsTheSize) {
    for (const TextSize size : textSizes) {
        change([&](Settings &settings) { settings.textSize = size; });
        EXPECT_EQ(QApplication::font().pixelSize(), bodySize(size));
        EXPECT_EQ(window.findChild<ComposerTextView *>()->font().pixelSize(), bodySize(size));
        EXPECT_EQ(QToolTip::font(), fontOf(TextStyle::caption, {size, TypeFace::sans}));
        EXPECT_EQ(window.menuBar()->font(), fontOf(TextStyle::control, {size, TypeFace::sans}));
    }
}

TEST_F(ThemeTest, everyTextFollowsTheTypeface) {
    change([](Settings &settings) { settings.typeFace = TypeFace::serif; });
    const QString serif = fontOf(TextStyle::body, {TextSize::large, TypeFace::serif}).family();
    ASSERT_NE(serif, fontOf(TextStyle::body, {}).family());
    window.windows().open(windowid::settings);
    QMenu menu;
    EXPECT_EQ(menu.font().family(), serif);
    EXPECT_EQ(QToolTip::font().family(), serif);
    EXPECT_EQ(window.menuBar()->font().family(), serif);
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (qobject_cast<const Label *>(widget) || qobject_cast<const ComposerTextView *>(widget)) {
            EXPECT_EQ(widget->font().family(), serif);
        }
    }
}
