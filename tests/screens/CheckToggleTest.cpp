#include "screens/CheckToggle.h"

#include "screens/Screen.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// Which side of its box the thumb stands at: 0 for the left, 1 for the right.
double thumbShare(const CheckToggle &toggle) {
    const double inset = toggle.thumb().top() - toggle.box().top();
    const double way = toggle.box().width() - toggle.thumb().width() - 2 * inset;
    return (toggle.thumb().left() - toggle.box().left() - inset) / way;
}

} // namespace

TEST(CheckToggleTest, itHasItsSizes) {
    const StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.resize(toggle.sizeHint());
    EXPECT_EQ(toggle.box().size(), QSizeF(36, 20));
    EXPECT_EQ(toggle.thumb().size(), QSizeF(16, 16));
    EXPECT_TRUE(toggle.box().contains(toggle.thumb()));
    toggle.setOn(true);
    EXPECT_TRUE(toggle.box().contains(toggle.thumb()));
}

TEST(CheckToggleTest, theMouseAndTheKeysTurnIt) {
    const StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    present(toggle);
    click(&toggle);
    EXPECT_TRUE(toggle.isChecked());
    QTest::keyClick(&toggle, Qt::Key_Space);
    EXPECT_FALSE(toggle.isChecked());
    QTest::keyClick(&toggle, Qt::Key_Return);
    EXPECT_TRUE(toggle.isChecked());
}

TEST(CheckToggleTest, itTellsWhatThePersonDoesAndNothingElse) {
    const StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    present(toggle);
    QSignalSpy turned(&toggle, &CheckToggle::turned);
    toggle.setOn(true);
    EXPECT_EQ(turned.count(), 0);
    click(&toggle);
    ASSERT_EQ(turned.count(), 1);
    EXPECT_EQ(turned.last().first(), false);
    QAccessible::queryAccessibleInterface(&toggle)->actionInterface()->doAction(
        QAccessibleActionInterface::toggleAction());
    ASSERT_EQ(turned.count(), 2);
    EXPECT_EQ(turned.last().first(), true);
}

TEST(CheckToggleTest, itIsReadAloudWithItsState) {
    const StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    EXPECT_EQ(spokenName(&toggle), u"Offline Mode"_s);
    EXPECT_EQ(spokenRole(&toggle), QAccessible::CheckBox);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&toggle)->state().checked);
    toggle.setOn(true);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&toggle)->state().checked);
}

TEST(CheckToggleTest, theThumbGoesOverUnlessMotionIsReduced) {
    Look look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.show();
    toggle.setOn(true);
    EXPECT_LT(thumbShare(toggle), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return thumbShare(toggle) == 1; }));
    look.setMotion(Motion::reduced);
    toggle.setOn(false);
    EXPECT_EQ(thumbShare(toggle), 0);
}

TEST(CheckToggleTest, whatIsNotSeenDoesNotMove) {
    const Look look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.setOn(true);
    EXPECT_EQ(thumbShare(toggle), 1);
}

TEST(CheckToggleTest, whereOneReadsFromTheRightItIsTurnedAround) {
    const StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(thumbShare(toggle), 1);
    toggle.setOn(true);
    EXPECT_EQ(thumbShare(toggle), 0);
}

TEST(CheckToggleTest, theThumbHasACheckMarkWhileItIsOn) {
    StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.resize(toggle.sizeHint());
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        const auto marks = [&] {
            const QImage image = toggle.grab(toggle.thumb().toRect()).toImage();
            QColor strongest = look.palette().thumb();
            for (int y = 4; y < 12; ++y) {
                for (int x = 4; x < 12; ++x) {
                    if (contrast(image.pixelColor(x, y), look.palette().thumb()) >
                        contrast(strongest, look.palette().thumb()))
                        strongest = image.pixelColor(x, y);
                }
            }
            return contrast(strongest, look.palette().thumb());
        };
        toggle.setOn(false);
        EXPECT_NEAR(marks(), 1, 0.01) << displayName(theme).toStdString();
        toggle.setOn(true);
        EXPECT_GT(marks(), 0.5 * contrast(look.palette().onThumb(), look.palette().thumb()));
        EXPECT_GE(contrast(look.palette().onThumb(), look.palette().thumb()), 3);
    }
}

TEST(CheckToggleTest, itIsDrawnInTheThemesColors) {
    StillLook look;
    CheckToggle toggle(look, u"Offline Mode"_s);
    toggle.resize(toggle.sizeHint());
    toggle.setOn(true);
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        const QImage image = toggle.grab().toImage();
        const QPoint middle = toggle.box().center().toPoint();
        EXPECT_EQ(image.pixel(middle - QPoint(8, 0)), look.palette().accent.rgb());
        EXPECT_EQ(image.pixel(toggle.thumb().center().toPoint() + QPoint(0, 6)),
                  look.palette().thumb().rgb());
    }
}
