#include "screens/ProgressBar.h"

#include "screens/Screen.h"
#include "screens/Style.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ProgressBarTest : public testing::Test {
protected:
    double heard() {
        return QAccessible::queryAccessibleInterface(&bar)->valueInterface()->currentValue().toDouble();
    }

    Look look;
    ProgressBar bar{look, u"Model download"_s};
};

} // namespace

TEST_F(ProgressBarTest, whatNobodySeesNeedNotGlide) {
    bar.setFraction(0.4);
    EXPECT_EQ(bar.shownFraction(), 0.4);
}

TEST_F(ProgressBarTest, itGoesToANewValueEvenlyIn180Milliseconds) {
    AnimationClock time;
    bar.show();
    bar.setFraction(1);
    time.advance(0ms);
    for (const double way : {0.25, 0.5, 0.75, 1.0}) {
        time.advance(45ms);
        EXPECT_NEAR(bar.shownFraction(), way, 0.01);
    }
}

TEST_F(ProgressBarTest, withReducedMotionItIsThereAtOnce) {
    look.setMotion(Motion::reduced);
    bar.show();
    bar.setFraction(0.7);
    EXPECT_EQ(bar.shownFraction(), 0.7);
}

TEST_F(ProgressBarTest, aScreenReaderHearsHowFarItIs) {
    EXPECT_EQ(spokenName(&bar), u"Model download"_s);
    bar.setFraction(0.25);
    EXPECT_EQ(heard(), 250);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&bar)->valueInterface()->maximumValue(), 1000);
}

TEST_F(ProgressBarTest, itsLengthIsItsFraction) {
    look.setMotion(Motion::reduced);
    bar.resize(bar.sizeHint());
    bar.setFraction(0.5);
    const QImage image = bar.grab().toImage();
    const QRgb done = look.palette().done().rgb();
    EXPECT_EQ(image.pixel(style::progressWidth / 2 - 4, style::progressHeight / 2), done);
    EXPECT_NE(image.pixel(style::progressWidth / 2 + 6, style::progressHeight / 2), done);
}
