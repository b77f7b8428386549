#include "platform/ReducedMotion.h"
#include "screens/Screen.h"
#include "screens/Spinner.h"
#include "screens/StatusDot.h"
#include "screens/TypingIndicator.h"
#include "screens/TypingMotion.h"
#include "support/EnvironmentVariable.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(TypingMotionTest, eachDotSwellsAfterTheOneBefore) {
    EXPECT_DOUBLE_EQ(typing::scaleAt(0ms, 0), 0.5);
    EXPECT_DOUBLE_EQ(typing::scaleAt(500ms, 0), 1);
    EXPECT_DOUBLE_EQ(typing::scaleAt(1000ms, 0), 0.5);
    EXPECT_DOUBLE_EQ(typing::scaleAt(160ms, 1), 0.5);
    EXPECT_DOUBLE_EQ(typing::scaleAt(660ms, 1), 1);
    EXPECT_DOUBLE_EQ(typing::scaleAt(820ms, 2), 1);
    EXPECT_NEAR(typing::scaleAt(250ms, 0), 0.75, 1e-9);
    // 0.5 + 0.5 · (1 − cos(π · p)) / 2
    EXPECT_NEAR(typing::scaleAt(125ms, 0), 0.573223, 1e-6);
    EXPECT_NEAR(typing::scaleAt(400ms, 0), 0.952254, 1e-6);
    EXPECT_NEAR(typing::scaleAt(600ms, 0), 0.952254, 1e-6) << "and the same way back";
}

TEST(TypingMotionTest, theAccentMovesOnEveryTwoSeconds) {
    EXPECT_EQ(typing::accentShareAt(0ms, 0), 1);
    EXPECT_EQ(typing::accentShareAt(1999ms, 0), 1);
    EXPECT_EQ(typing::accentShareAt(1999ms, 1), 0);
    EXPECT_NEAR(typing::accentShareAt(2225ms, 1), 0.5, 1e-9);
    EXPECT_NEAR(typing::accentShareAt(2225ms, 0), 0.5, 1e-9);
    EXPECT_NEAR(typing::accentShareAt(2090ms, 1), 0.095492, 1e-6) << "slowly at first";
    EXPECT_NEAR(typing::accentShareAt(2360ms, 1), 0.904508, 1e-6);
    EXPECT_EQ(typing::accentShareAt(2450ms, 1), 1);
    EXPECT_EQ(typing::accentShareAt(2450ms, 0), 0);
    EXPECT_EQ(typing::accentShareAt(6450ms, 0), 1);
}

TEST(TypingIndicatorTest, itMovesOnlyWhileItIsSeen) {
    Look look;
    TypingIndicator indicator(look);
    EXPECT_FALSE(indicator.isMoving());
    indicator.show();
    EXPECT_TRUE(indicator.isMoving());
    indicator.hide();
    EXPECT_FALSE(indicator.isMoving());
    EXPECT_EQ(indicator.sizeHint(), QSize(3 * 7 + 2 * 5, 7));
}

TEST(TypingIndicatorTest, itStandsStillWhereMotionIsReduced) {
    Look look;
    TypingIndicator indicator(look);
    indicator.show();
    look.setMotion(Motion::reduced);
    EXPECT_FALSE(indicator.isMoving());
    look.setMotion(Motion::full);
    EXPECT_TRUE(indicator.isMoving());
}

TEST(TypingIndicatorTest, whereMotionIsReducedItsDotsAreWhole) {
    StillLook look;
    TypingIndicator indicator(look);
    indicator.resize(indicator.sizeHint());
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        QImage image(indicator.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        indicator.render(&image, {}, {}, {});
        for (int dot = 0; dot < 3; ++dot) {
            const QColor color = dot == 0 ? look.palette().accent : look.palette().secondaryInk();
            const int left = dot * 12;
            EXPECT_EQ(image.pixel(left + 3, 3), color.rgb()) << dot;
            EXPECT_GT(image.pixelColor(left, 3).alpha(), 200) << "seven wide";
            EXPECT_GT(image.pixelColor(left + 6, 3).alpha(), 200);
            EXPECT_GT(image.pixelColor(left + 3, 0).alpha(), 200) << "and high";
            EXPECT_LT(image.pixelColor(left, 0).alpha(), 60) << "and round";
            if (dot < 2) {
                EXPECT_EQ(image.pixelColor(left + 7, 3).alpha(), 0) << "five apart";
                EXPECT_EQ(image.pixelColor(left + 11, 3).alpha(), 0);
            }
        }
    }
}

TEST(StatusDotTest, aStoppedEngineHasAQuietLamp) {
    Look look;
    StatusDot dot(look);
    dot.setLamp(statusLamp({EngineStatus::State::stopped, {}}));
    EXPECT_EQ(dot.color(), look.palette().secondaryInk());
    EXPECT_FALSE(dot.isMoving());
}

TEST(StatusDotTest, itPulsesWhileTheEngineWakesUp) {
    Look look;
    StatusDot dot(look);
    dot.show();
    dot.setLamp(statusLamp({EngineStatus::State::ready, {}}));
    EXPECT_FALSE(dot.isMoving());
    EXPECT_EQ(dot.color(), look.palette().good());
    dot.setLamp(statusLamp({EngineStatus::State::loading, {}}));
    EXPECT_TRUE(dot.isMoving());
    EXPECT_EQ(dot.color(), look.palette().waking());
    look.setMotion(Motion::reduced);
    EXPECT_FALSE(dot.isMoving());
}

TEST(StatusDotTest, itTellsTheStatusAloud) {
    Look look;
    StatusDot dot(look);
    dot.setLamp(statusLamp(EngineStatus::failed(u"x"_s)));
    EXPECT_EQ(spokenName(&dot), u"Ostrelin status: Engine error"_s);
    EXPECT_EQ(dot.color(), look.palette().bad());
    EXPECT_EQ(dot.toolTip(), spokenName(&dot));
}

TEST(SpinnerTest, itIsDrawnInTheProgramsAmber) {
    StillLook look;
    Spinner spinner(look);
    spinner.resize(spinner.sizeHint());
    spinner.show();
    EXPECT_FALSE(spinner.isMoving());
    const QImage picture = spinner.grab().toImage();
    const QRgb amber = QColor::fromRgbF(0.965f, 0.651f, 0.227f).rgb();
    bool found = false;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            found = found || picture.pixel(x, y) == amber;
    }
    EXPECT_TRUE(found);
}

TEST(ReducedMotionTest, withoutASessionBusItIsOff) {
    const EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", "");
    const EnvironmentVariable noFolder("XDG_RUNTIME_DIR", "");
    ReducedMotion motion;
    motion.watch();
    motion.watch();
    QCoreApplication::processEvents();
    EXPECT_FALSE(motion.isOn());
}

TEST(ReducedMotionTest, aBusThatIsNotThereIsNoHarm) {
    const EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    ReducedMotion motion;
    motion.watch();
    QTest::qWait(20);
    EXPECT_FALSE(motion.isOn());
}
