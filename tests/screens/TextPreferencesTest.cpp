#include "screens/TextPreferences.h"

#include "screens/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TextPreferencesTest, theFourSizesHaveTheirFontSizeAndSpacing) {
    EXPECT_EQ(bodySize(TextSize::small), 13);
    EXPECT_EQ(bodySize(TextSize::medium), 14);
    EXPECT_EQ(bodySize(TextSize::large), 15);
    EXPECT_EQ(bodySize(TextSize::extraLarge), 17);
    EXPECT_EQ(lineSpacing(TextSize::small), 3);
    EXPECT_EQ(lineSpacing(TextSize::medium), 4);
    EXPECT_EQ(lineSpacing(TextSize::large), 5);
    EXPECT_EQ(lineSpacing(TextSize::extraLarge), 6);
    EXPECT_EQ(displayName(TextSize::extraLarge), u"Extra large"_s);
    EXPECT_EQ(displayName(TypeFace::sans), u"Sans serif"_s);
    EXPECT_EQ(displayName(TypeFace::serif), u"Serif"_s);
}

TEST(TextPreferencesTest, theScaleFollowsTheBodyAndTheWordmarkStands) {
    const TextPreferences small{TextSize::small, TypeFace::sans};
    const TextPreferences large{TextSize::extraLarge, TypeFace::sans};
    EXPECT_EQ(fontOf(TextStyle::body, small).pixelSize(), 13);
    EXPECT_EQ(fontOf(TextStyle::body, large).pixelSize(), 17);
    EXPECT_EQ(fontOf(TextStyle::wordmark, small).pixelSize(), 44);
    EXPECT_EQ(fontOf(TextStyle::wordmark, large).pixelSize(), 44);
    EXPECT_LT(fontOf(TextStyle::control, large).pixelSize(), fontOf(TextStyle::heading, large).pixelSize());
}

TEST(TextPreferencesTest, everyStepButTheWordmarkGrowsWithTheSize) {
    for (const TextStyle style :
         {TextStyle::heading, TextStyle::headline, TextStyle::tagline, TextStyle::title, TextStyle::body,
          TextStyle::callout, TextStyle::control, TextStyle::caption}) {
        int before = 0;
        for (const TextSize size : textSizes) {
            const int pixels = fontOf(style, {size, TypeFace::sans}).pixelSize();
            EXPECT_GT(pixels, before);
            EXPECT_EQ(fontOf(style, {size, TypeFace::serif}).pixelSize(), pixels);
            before = pixels;
        }
    }
}

TEST(TextPreferencesTest, serifIsAnotherFamilyInEveryStep) {
    for (const TextStyle style : {TextStyle::wordmark, TextStyle::heading, TextStyle::headline,
                                  TextStyle::body, TextStyle::control, TextStyle::caption})
        EXPECT_NE(fontOf(style, {TextSize::large, TypeFace::serif}).family(),
                  fontOf(style, {TextSize::large, TypeFace::sans}).family());
}

TEST(TextPreferencesTest, sizesAndFacesAreShownInTheirOrder) {
    QStringList names;
    for (const TextSize size : textSizes)
        names.append(displayName(size));
    EXPECT_EQ(names, (QStringList{u"Small"_s, u"Medium"_s, u"Large"_s, u"Extra large"_s}));
}

TEST(TextPreferencesTest, theFamiliesAreTakenWhereTheyAreInstalled) {
    if (QFontDatabase::hasFamily(u"Inter"_s)) {
        EXPECT_EQ(fontOf(TextStyle::body, {}).family(), u"Inter"_s);
    }
    if (QFontDatabase::hasFamily(u"Noto Serif"_s)) {
        EXPECT_EQ(fontOf(TextStyle::body, {TextSize::large, TypeFace::serif}).family(), u"Noto Serif"_s);
    }
}

TEST(LookTest, aChangeIsToldOnceAndOnlyWhenThereIsOne) {
    Look look;
    QSignalSpy changed(&look, &Look::changed);
    Settings settings;
    look.follow(settings);
    EXPECT_EQ(changed.count(), 0);
    settings.theme = Theme::pink;
    settings.textSize = TextSize::small;
    look.follow(settings);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(look.theme(), Theme::pink);
    EXPECT_EQ(look.text().size, TextSize::small);
    settings.memoryEnabled = false;
    look.follow(settings);
    EXPECT_EQ(changed.count(), 1);
}

TEST(LookTest, theApplicationTakesColorsAndFont) {
    const QPalette colorsBefore = QApplication::palette();
    const QFont fontBefore = QApplication::font();
    Look look;
    Settings settings;
    settings.theme = Theme::softGreen;
    look.follow(settings);
    look.applyToApplication();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), paletteOf(Theme::softGreen).background);
    EXPECT_EQ(QApplication::font().pixelSize(), 15);
    QApplication::setPalette(colorsBefore);
    QApplication::setFont(fontBefore);
}
