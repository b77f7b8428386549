#include "screens/ProgressBar.h"

#include "screens/Screen.h"
#include "screens/Style.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

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
    bar.show();
    QElapsedTimer timer;
    timer.start();
    bar.setFraction(1);
    EXPECT_LT(bar.shownFraction(), 0.5);
    double before = bar.shownFraction();
    ASSERT_TRUE(QTest::qWaitFor([&] {
        EXPECT_GE(bar.shownFraction(), before);
        before = bar.shownFraction();
        return before == 1;
    }));
    EXPECT_GE(timer.elapsed(), 150);
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
