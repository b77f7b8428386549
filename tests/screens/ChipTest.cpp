#include "screens/Screen.h"
#include "screens/SpeedChip.h"
#include "screens/ThinkModeChip.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QString spokenText(QWidget *widget, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(widget)->text(kind);
}

class SpeedChipTest : public testing::Test {
protected:
    SpeedChipTest() {
        present(chip);
        // The screen saves what is chosen, and shows what is saved.
        QObject::connect(&chip, &SpeedChip::speedChosen, &chip, [this](ResponseSpeed speed) {
            chosen.append(speed);
            chip.setSpeed(speed);
        });
    }

    StillLook look;
    SpeedChip chip{look};
    QList<ResponseSpeed> chosen;
};

class ThinkModeChipTest : public testing::Test {
protected:
    ThinkModeChipTest() {
        present(chip);
        QObject::connect(&chip, &ThinkModeChip::modeChosen, &chip, [this](ThinkMode mode) {
            chosen.append(mode);
            chip.setMode(mode);
        });
    }

    StillLook look;
    ThinkModeChip chip{look};
    QList<ThinkMode> chosen;
};

} // namespace

TEST_F(SpeedChipTest, threePressesComeBackToFull) {
    for (int press = 0; press < 3; ++press)
        click(&chip);
    EXPECT_EQ(chosen, (QList{ResponseSpeed::calm, ResponseSpeed::slowYourRoll, ResponseSpeed::full}));
    EXPECT_EQ(chip.text(), u"Full speed"_s);
}

TEST_F(SpeedChipTest, spaceAndReturnPressItToo) {
    chip.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&chip, Qt::Key_Space);
    QTest::keyClick(&chip, Qt::Key_Return);
    EXPECT_EQ(chosen, (QList{ResponseSpeed::calm, ResponseSpeed::slowYourRoll}));
}

TEST_F(SpeedChipTest, itShowsTheSpeedItIsGiven) {
    click(&chip);
    chip.setSpeed(ResponseSpeed::full);
    click(&chip);
    EXPECT_EQ(chosen, (QList{ResponseSpeed::calm, ResponseSpeed::calm}));
}

TEST_F(SpeedChipTest, everySpeedHasItsLabelItsHelpAndItsFill) {
    EXPECT_EQ(speedChipModel(ResponseSpeed::full),
              (ChipModel{u"Full speed"_s, u"Full speed — the engine runs flat out"_s, 0, u"Full speed"_s}));
    EXPECT_EQ(speedChipModel(ResponseSpeed::calm),
              (ChipModel{u"Calm"_s, u"Calm — a second of rest between bursts"_s, 0.5, u"Calm"_s}));
    EXPECT_EQ(speedChipModel(ResponseSpeed::slowYourRoll),
              (ChipModel{u"Slow your roll"_s,
                         u"Slow your roll — long rests between bursts, about a token a second"_s, 1,
                         u"Slow your roll"_s}));
}

TEST_F(SpeedChipTest, aScreenReaderHearsWhatItChoosesAndTheChoice) {
    chip.setSpeed(ResponseSpeed::calm);
    EXPECT_EQ(spokenRole(&chip), QAccessible::Button);
    EXPECT_EQ(spokenName(&chip), u"Response speed"_s);
    EXPECT_EQ(spokenText(&chip, QAccessible::Value), u"Calm"_s);
    EXPECT_EQ(spokenText(&chip, QAccessible::Description), u"Calm — a second of rest between bursts"_s);
    EXPECT_EQ(chip.toolTip(), u"Calm — a second of rest between bursts"_s);
}

TEST_F(SpeedChipTest, assistiveTechnologyCanPressIt) {
    QAccessibleActionInterface *actions = QAccessible::queryAccessibleInterface(&chip)->actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(chosen, QList{ResponseSpeed::calm});
}

TEST_F(SpeedChipTest, itStaysBelowThePointerFromPressToPress) {
    const QSize size = chip.sizeHint();
    chip.setSpeed(ResponseSpeed::calm);
    EXPECT_EQ(chip.sizeHint(), size);
    chip.setSpeed(ResponseSpeed::slowYourRoll);
    EXPECT_EQ(chip.sizeHint(), size);
}

TEST_F(SpeedChipTest, theFillComesFromTheLeft) {
    const auto colorAt = [this](double share) {
        return chip.grab().toImage().pixelColor(int(chip.width() * share), 3);
    };
    const QColor empty = colorAt(0.3);
    EXPECT_EQ(colorAt(0.7), empty);
    chip.setSpeed(ResponseSpeed::calm);
    const QColor filled = colorAt(0.3);
    EXPECT_NE(filled, empty);
    EXPECT_EQ(colorAt(0.7), empty);
    chip.setSpeed(ResponseSpeed::slowYourRoll);
    EXPECT_EQ(colorAt(0.7), filled);
}

TEST(ChipFillTest, theLabelCanBeReadOnItInEveryTheme) {
    for (const Theme theme : themes) {
        const Palette &palette = paletteOf(theme);
        const QColor fill = palette.chipFill();
        const QColor ground = mixed(palette.surface, palette.accent, fill.alphaF());
        EXPECT_GE(contrast(palette.ink, ground), 4.5) << displayName(theme).toStdString();
    }
}

TEST_F(ThinkModeChipTest, threePressesComeBackToOff) {
    for (int press = 0; press < 3; ++press)
        click(&chip);
    EXPECT_EQ(chosen, (QList{ThinkMode::nextReply, ThinkMode::always, ThinkMode::off}));
}

TEST_F(ThinkModeChipTest, everyModeHasItsHelpAndItsFill) {
    EXPECT_EQ(thinkModeChipModel(ThinkMode::off),
              (ChipModel{u"Think longer"_s, u"Think longer before answering"_s, 0, u"Off"_s}));
    EXPECT_EQ(
        thinkModeChipModel(ThinkMode::nextReply),
        (ChipModel{u"Think longer"_s, u"Thinking longer before this reply — press again to always think"_s,
                   0.5, u"Next reply"_s}));
    EXPECT_EQ(
        thinkModeChipModel(ThinkMode::always),
        (ChipModel{u"Think longer"_s, u"Always thinking longer — press to turn off"_s, 1, u"Always"_s}));
}

TEST_F(ThinkModeChipTest, aScreenReaderHearsTheMode) {
    chip.setMode(ThinkMode::always);
    EXPECT_EQ(spokenName(&chip), u"Think longer"_s);
    EXPECT_EQ(spokenText(&chip, QAccessible::Description), u"Always thinking longer — press to turn off"_s);
    EXPECT_EQ(spokenText(&chip, QAccessible::Value), u"Always"_s);
    chip.setMode(ThinkMode::nextReply);
    EXPECT_EQ(spokenText(&chip, QAccessible::Value), u"Next reply"_s);
    chip.setMode(ThinkMode::off);
    EXPECT_EQ(spokenText(&chip, QAccessible::Value), u"Off"_s);
}
