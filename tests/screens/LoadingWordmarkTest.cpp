#include "screens/LoadingWordmark.h"

#include "screens/Screen.h"

#include <QImage>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class LoadingWordmarkTest : public testing::Test {
protected:
    /// How many pixels of that half of the name have a colour rather than a shade of grey.
    enum class Half { left, right };
    static int colored(const QImage &picture, Half half) {
        int count = 0;
        const int middle = picture.width() / 2;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = half == Half::left ? 0 : middle; x < (half == Half::left ? middle : picture.width());
                 ++x) {
                const QColor color = picture.pixelColor(x, y);
                count += color.alpha() > 200 && color.red() - color.blue() > 60;
            }
        }
        return count;
    }

    QImage picture(double scale = 1) {
        word.resize(word.sizeHint());
        QImage image(word.size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        word.render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    struct Word : LoadingWordmark {
        using LoadingWordmark::LoadingWordmark;
        using LoadingWordmark::motionTime;
    };

    Look look;
    Word word{look};
};

} // namespace

TEST_F(LoadingWordmarkTest, itFillsFromTheLeftInProportion) {
    EXPECT_EQ(colored(picture(), Half::left), 0);
    word.setFilling(0.5);
    EXPECT_GT(colored(picture(), Half::left), 100);
    EXPECT_LT(colored(picture(), Half::right), colored(picture(), Half::left) / 10);
    word.setFilling(1);
    EXPECT_GT(colored(picture(), Half::right), 100);
}

TEST_F(LoadingWordmarkTest, itsColorsRunFromTheTopOfTheSunToItsFoot) {
    word.setFilling(1);
    const QImage image = picture(2);
    QList<double> greens;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width() / 6; ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() == 255 && (greens.isEmpty() || color.greenF() < greens.last()))
                greens.append(color.greenF());
        }
    }
    EXPECT_GT(greens.first(), 0.8);
    EXPECT_NEAR(greens.last(), 0.51, 0.03);
}

TEST_F(LoadingWordmarkTest, itIsAsSharpAsTheScreen) {
    word.setFilling(0.5);
    const int once = colored(picture(1), Half::left);
    const int twice = colored(picture(2), Half::left);
    EXPECT_GT(twice, 3 * once);
    EXPECT_LT(twice, 6 * once);
}

TEST_F(LoadingWordmarkTest, theShineRunsAcrossIn2200MillisecondsAndBeginsAnew) {
    EXPECT_LT(LoadingWordmark::shineAt(0ms), 0);
    EXPECT_NEAR(LoadingWordmark::shineAt(1100ms), 0.5, 1e-9);
    EXPECT_GT(LoadingWordmark::shineAt(2199ms), 1);
    EXPECT_EQ(LoadingWordmark::shineAt(2200ms), LoadingWordmark::shineAt(0ms));
    // Evenly, and never back.
    const double step = LoadingWordmark::shineAt(100ms) - LoadingWordmark::shineAt(0ms);
    EXPECT_NEAR(LoadingWordmark::shineAt(1500ms) - LoadingWordmark::shineAt(1400ms), step, 1e-9);
}

TEST_F(LoadingWordmarkTest, itShinesOnlyWhileTheEngineWakesUp) {
    word.show();
    EXPECT_FALSE(word.isMoving());
    word.setFilling(0.3);
    EXPECT_FALSE(word.isMoving());
    word.setWaking(true);
    EXPECT_TRUE(word.isMoving());
    word.hide();
    EXPECT_FALSE(word.isMoving());
    word.show();
    word.setWaking(false);
    EXPECT_FALSE(word.isMoving());
}

TEST_F(LoadingWordmarkTest, theShineIsABandOfWhite) {
    word.setFilling(1);
    word.show();
    const QImage still = picture();
    word.setWaking(true);
    double first = 0;
    double last = 0;
    QImage shining;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        first = LoadingWordmark::shineAt(word.motionTime());
        shining = picture();
        last = LoadingWordmark::shineAt(word.motionTime());
        return first > 0.2 && last >= first && last < 0.8;
    }));
    double whitest = 0;
    for (int y = 0; y < still.height(); ++y) {
        for (int x = 0; x < still.width(); ++x) {
            const double place = double(x) / still.width();
            if (place < first - 0.35 || place > last + 0.35) {
                EXPECT_EQ(shining.pixel(x, y), still.pixel(x, y)) << "outside of the band";
            }
            const QColor before = still.pixelColor(x, y);
            if (before.alpha() == 255 && before.blue() < 200)
                whitest = std::max(whitest, (shining.pixelColor(x, y).blueF() - before.blueF()) /
                                                (1.0 - before.blueF()));
        }
    }
    // In the very middle of the band it is 0.85; a letter may be beside that.
    EXPECT_LE(whitest, 0.86);
    EXPECT_GE(whitest, 0.7);
}

TEST_F(LoadingWordmarkTest, withReducedMotionNothingShines) {
    look.setMotion(Motion::reduced);
    word.show();
    word.setWaking(true);
    EXPECT_FALSE(word.isMoving());
    const QImage before = picture();
    QTest::qWait(60);
    EXPECT_EQ(picture(), before);
}
