#include "screens/ThinkingDisclosure.h"

#include "screens/Screen.h"
#include "screens/Style.h"
#include "screens/ThinkingBox.h"
#include "screens/ThinkingHead.h"
#include "support/Await.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Stage = ThinkingStage;

QString lines(int count) {
    QStringList list;
    for (int line = 1; line <= count; ++line)
        list.append(u"line %1"_s.arg(line));
    return list.join(u'\n');
}

class ThinkingDisclosureTest : public testing::Test {
protected:
    ThinkingDisclosureTest() {
        window.resize(500, 500);
        QObject::connect(disclosure, &ThinkingDisclosure::heightChanged, disclosure, [this] { lay(); });
        show(20);
        present(window);
    }

    void show(int count, bool isStreaming = false) {
        disclosure->setReasoning(lines(count), isStreaming);
        lay();
    }
    void lay() { disclosure->setGeometry(0, 0, 500, disclosure->layIn(500)); }

    QPushButton *head() { return disclosure->findChild<ThinkingHead *>(); }
    QPushButton *box() { return disclosure->findChild<ThinkingBox *>(); }
    QScrollBar *bar() { return box()->findChild<QScrollBar *>(); }
    bool isAtTail() { return bar()->value() == bar()->maximum(); }

    /// The height of so many lines: after the last one, nothing follows.
    int heightOf(int count, int line = 21) {
        return (count - 1) * line + int(std::ceil(QFontMetricsF(look.font(TextStyle::callout)).height()));
    }

    /// The height of the text in the box, without the frame's inner space.
    int boxHeight() { return box()->height() - 2 * 8; }

    /// True if the box takes the wheel, rather than leaving it to what it stands in.
    bool wheel(int angle) {
        const QPointF centre = QRectF(box()->rect()).center();
        QWheelEvent event(centre, box()->mapToGlobal(centre), {}, {0, angle}, {}, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(box(), &event);
        return event.isAccepted();
    }

    void setTextSize(TextSize size) {
        Settings settings;
        settings.textSize = size;
        look.follow(settings);
        lay();
    }

    StillLook look;
    QWidget window;
    ThinkingDisclosure *disclosure = new ThinkingDisclosure(look, &window);
};

} // namespace

TEST_F(ThinkingDisclosureTest, itBeginsWithTheBox) {
    EXPECT_EQ(disclosure->stage(), Stage::box);
    EXPECT_TRUE(box()->isVisible());
    EXPECT_EQ(head()->toolTip(), u"Hide the thinking"_s);
}

TEST_F(ThinkingDisclosureTest, theHeadLeadsFromTheBoxToNothingAndBack) {
    click(head());
    EXPECT_EQ(disclosure->stage(), Stage::hidden);
    EXPECT_FALSE(box()->isVisible());
    EXPECT_EQ(disclosure->height(), head()->height());
    EXPECT_EQ(head()->toolTip(), u"Show the thinking"_s);
    click(head());
    EXPECT_EQ(disclosure->stage(), Stage::box);
    EXPECT_TRUE(box()->isVisible());
}

TEST_F(ThinkingDisclosureTest, theHeadLeadsFromAllOfItToTheBox) {
    click(box());
    EXPECT_EQ(disclosure->stage(), Stage::expanded);
    EXPECT_EQ(head()->toolTip(), u"Back to the five-line box"_s);
    click(head());
    EXPECT_EQ(disclosure->stage(), Stage::box);
}

TEST_F(ThinkingDisclosureTest, aTapOnTheBoxShowsAllAndAnotherTheBoxAgain) {
    const int before = disclosure->height();
    click(box());
    EXPECT_EQ(disclosure->stage(), Stage::expanded);
    EXPECT_EQ(boxHeight(), heightOf(20));
    EXPECT_EQ(bar()->maximum(), 0);
    EXPECT_FALSE(bar()->isVisible());
    click(box());
    EXPECT_EQ(disclosure->stage(), Stage::box);
    EXPECT_EQ(disclosure->height(), before);
}

TEST_F(ThinkingDisclosureTest, theBoxIsFiveLinesHighWhateverIsInIt) {
    for (const int count : {1, 5, 6, 300}) {
        show(count);
        EXPECT_EQ(boxHeight(), 5 * 21) << count;
        EXPECT_EQ(bar()->maximum(), std::max(0, heightOf(count) - 5 * 21)) << count;
    }
    show(1);
    click(box());
    EXPECT_EQ(boxHeight(), heightOf(1)) << "its natural height";
}

TEST_F(ThinkingDisclosureTest, theLinesScaleWithTheSizeOfText) {
    const std::pair<TextSize, int> sizes[] = {
        {TextSize::small, 18}, {TextSize::medium, 20}, {TextSize::large, 21}, {TextSize::extraLarge, 24}};
    for (const auto &[size, line] : sizes) {
        setTextSize(size);
        EXPECT_EQ(boxHeight(), 5 * line);
        EXPECT_EQ(bar()->maximum(), heightOf(20, line) - 5 * line) << "the text is laid by the same measure";
        EXPECT_EQ(disclosure->height(), ThinkingDisclosure::initialHeight(look));
    }
}

TEST_F(ThinkingDisclosureTest, theBoxFollowsTheNewestLineWhileItComes) {
    EXPECT_EQ(bar()->value(), 0) << "a finished one is read from its start";
    for (int count = 21; count < 40; ++count) {
        show(count, true);
        ASSERT_TRUE(isAtTail());
    }
    bar()->setValue(10);
    show(40, true);
    EXPECT_TRUE(isAtTail()) << "also after the person has scrolled";
    bar()->setValue(10);
    show(41);
    EXPECT_EQ(bar()->value(), 10) << "the thinking is over";
}

TEST_F(ThinkingDisclosureTest, aBoxThatIsShownAgainIsAtItsTail) {
    show(30, true);
    click(box());
    click(box());
    EXPECT_TRUE(isAtTail());
    click(head());
    click(head());
    EXPECT_TRUE(isAtTail());
}

TEST_F(ThinkingDisclosureTest, theWheelScrollsTheBoxAndThenTheList) {
    EXPECT_FALSE(wheel(120)) << "it is at its start";
    EXPECT_TRUE(wheel(-120));
    EXPECT_EQ(bar()->value(), QApplication::wheelScrollLines() * 21);
    while (!isAtTail())
        ASSERT_TRUE(wheel(-120));
    EXPECT_FALSE(wheel(-120));
    EXPECT_TRUE(wheel(120));
    click(box());
    EXPECT_FALSE(wheel(-120)) << "nothing scrolls where all is shown";
}

TEST_F(ThinkingDisclosureTest, aClickLeavesTheFocusWhereItIs) {
    click(box());
    click(head());
    EXPECT_FALSE(window.focusWidget());
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(box())->state().focusable);
}

TEST_F(ThinkingDisclosureTest, keysWorkWhatThePointerWorks) {
    head()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(head(), Qt::Key_Space);
    EXPECT_EQ(disclosure->stage(), Stage::hidden);
    QTest::keyClick(head(), Qt::Key_Return);
    EXPECT_EQ(disclosure->stage(), Stage::box);
    box()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box(), Qt::Key_Return);
    EXPECT_EQ(disclosure->stage(), Stage::expanded);
    QTest::keyClick(box(), Qt::Key_Space);
    EXPECT_EQ(disclosure->stage(), Stage::box);
}

TEST_F(ThinkingDisclosureTest, keysScrollTheBox) {
    box()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box(), Qt::Key_Down);
    EXPECT_EQ(bar()->value(), 21);
    QTest::keyClick(box(), Qt::Key_PageDown);
    EXPECT_EQ(bar()->value(), 6 * 21);
    QTest::keyClick(box(), Qt::Key_Up);
    EXPECT_EQ(bar()->value(), 5 * 21);
    QTest::keyClick(box(), Qt::Key_End);
    EXPECT_TRUE(isAtTail());
    QTest::keyClick(box(), Qt::Key_Home);
    EXPECT_EQ(bar()->value(), 0);
}

TEST_F(ThinkingDisclosureTest, aScreenReaderHearsWhatThereIsToUnfold) {
    const auto state = [](QWidget *widget) { return QAccessible::queryAccessibleInterface(widget)->state(); };
    EXPECT_EQ(spokenName(head()), u"Thinking"_s);
    EXPECT_EQ(spokenRole(head()), QAccessible::Button);
    EXPECT_TRUE(state(head()).expanded);
    EXPECT_EQ(spokenName(box()), u"Show all of the thinking"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(box())->text(QAccessible::Description), lines(20));
    EXPECT_EQ(spokenRole(box()), QAccessible::Button);
    EXPECT_TRUE(state(box()).collapsed);
    const auto press = [](QWidget *widget) {
        QAccessible::queryAccessibleInterface(widget)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
    };
    press(box());
    EXPECT_EQ(disclosure->stage(), Stage::expanded);
    EXPECT_TRUE(state(box()).expanded);
    EXPECT_EQ(spokenName(box()), u"Back to the five-line box"_s);
    press(head());
    press(head());
    EXPECT_TRUE(state(head()).collapsed);
}

TEST_F(ThinkingDisclosureTest, withMotionTheStagesGlide) {
    look.setMotion(Motion::full);
    const int boxed = disclosure->height();
    click(box());
    EXPECT_EQ(disclosure->height(), boxed) << "it only sets out";
    EXPECT_GT(disclosure->settledHeight(), boxed);
    EXPECT_TRUE(eventually([this] { return disclosure->height() == disclosure->settledHeight(); }));
    click(head());
    click(head());
    EXPECT_TRUE(eventually([this] { return !box()->isVisible(); }));
}

TEST_F(ThinkingDisclosureTest, whatComesDuringTheGlideIsThereAtItsEnd) {
    look.setMotion(Motion::full);
    click(box());
    show(60, true);
    EXPECT_TRUE(eventually([this] { return boxHeight() == heightOf(60); }));
}

TEST_F(ThinkingDisclosureTest, withReducedMotionTheyAreThereAtOnce) {
    const QSignalSpy changes(disclosure, &ThinkingDisclosure::heightChanged);
    click(box());
    EXPECT_EQ(disclosure->height(), disclosure->settledHeight());
    EXPECT_GE(changes.count(), 1);
}

TEST_F(ThinkingDisclosureTest, theChevronTurnsWithTheStage) {
    const auto sign = [this] {
        const QRect area(style::rowOutset, (head()->height() - 12) / 2, 12, 12);
        return head()->grab(area).toImage().convertToFormat(QImage::Format_Grayscale8);
    };
    const auto difference = [](const QImage &one, const QImage &other) {
        int sum = 0;
        for (int y = 0; y < 12; ++y) {
            for (int x = 0; x < 12; ++x)
                sum += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
        }
        return sum / (12 * 12);
    };
    const QImage down = sign();
    EXPECT_GT(difference(down, down.mirrored()), 5) << "it points somewhere";
    click(head());
    EXPECT_LT(difference(sign(), down.transformed(QTransform().rotate(-90))), 4) << "to the right";
    click(head());
    click(box());
    EXPECT_LT(difference(sign(), down.mirrored()), 4) << "up";
}

TEST_F(ThinkingDisclosureTest, theHeadIsWrittenInTheSecondaryInk) {
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        const QImage drawn = head()->grab().toImage();
        EXPECT_GT(pixelsOf(drawn, look.palette().secondaryInk()), 0) << displayName(theme).toStdString();
        EXPECT_EQ(pixelsOf(drawn, look.palette().ink), 0) << displayName(theme).toStdString();
    }
}

TEST_F(ThinkingDisclosureTest, theTextStandsInAFrame) {
    QPalette colors = window.palette();
    colors.setColor(QPalette::Window, look.palette().background);
    window.setPalette(colors);
    const QImage drawn = box()->grab().toImage();
    const QColor background = window.grab().toImage().pixelColor(490, 490);
    const auto over = [](const QColor &color, const QColor &ground) {
        return mixed(ground, withOpacity(color, 1), color.alphaF());
    };
    const auto near = [](const QColor &one, const QColor &other) {
        return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
                   std::abs(one.blue() - other.blue()) <=
               6;
    };
    const QColor inside = over(look.palette().frameFill(), background);
    EXPECT_TRUE(near(drawn.pixelColor(5, 50), inside));
    EXPECT_TRUE(near(drawn.pixelColor(0, 50), over(look.palette().accentEdge(), inside)));
    const auto hasInk = [&](const QRect &area) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (!near(drawn.pixelColor(x, y), inside))
                    return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(hasInk({10, 8, 100, 21}));
    EXPECT_FALSE(hasInk({1, 20, 9, 60})) << "ten pixels are free at the side";
    EXPECT_FALSE(hasInk({20, 1, 100, 7})) << "and eight above";
}
