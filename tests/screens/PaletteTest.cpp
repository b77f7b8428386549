#include "screens/Palette.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QColor rgb(double red, double green, double blue) {
    return QColor::fromRgbF(float(red), float(green), float(blue));
}

} // namespace

TEST(PaletteTest, eachThemeForcesItsAppearance) {
    EXPECT_EQ(paletteOf(Theme::lightBlue).appearance, Appearance::light);
    EXPECT_EQ(paletteOf(Theme::pink).appearance, Appearance::light);
    EXPECT_EQ(paletteOf(Theme::crispWhite).appearance, Appearance::light);
    EXPECT_EQ(paletteOf(Theme::gray).appearance, Appearance::dark);
    EXPECT_EQ(paletteOf(Theme::nearBlack).appearance, Appearance::dark);
    EXPECT_EQ(paletteOf(Theme::softGreen).appearance, Appearance::light);
}

TEST(PaletteTest, theSwatchIsTheSidebarsColorInEveryTheme) {
    for (const Theme theme : themes)
        EXPECT_EQ(paletteOf(theme).swatch, paletteOf(theme).sidebar);
}

TEST(PaletteTest, theGivenColorsStandInTheirThemes) {
    struct Given {
        Theme theme;
        QColor sidebar, background, hairline, surface, ink, strongInk, accent;
    };
    const QColor white = rgb(1, 1, 1);
    const std::array given{
        Given{Theme::lightBlue, rgb(0.902, 0.941, 0.984), rgb(0.973, 0.984, 0.996),
              withOpacity(rgb(0.24, 0.36, 0.55), 0.2), white, rgb(0.11, 0.165, 0.227),
              rgb(0.122, 0.173, 0.239), rgb(0.72, 0.36, 0.06)},
        Given{Theme::pink, rgb(0.984, 0.918, 0.941), rgb(0.992, 0.969, 0.976),
              withOpacity(rgb(0.45, 0.13, 0.21), 0.2), white, rgb(0.2, 0.125, 0.169),
              rgb(0.235, 0.129, 0.188), rgb(0.72, 0.16, 0.4)},
        Given{Theme::crispWhite, rgb(0.949, 0.937, 0.91), white, withOpacity(rgb(0.44, 0.39, 0.3), 0.18),
              rgb(0.969, 0.961, 0.941), rgb(0.129, 0.125, 0.11), rgb(0.129, 0.125, 0.11),
              rgb(0.427, 0.157, 0.851)},
        Given{Theme::gray, rgb(0.173, 0.18, 0.2), rgb(0.216, 0.224, 0.247), withOpacity(Qt::black, 0.4),
              rgb(0.267, 0.275, 0.298), rgb(0.925, 0.925, 0.937), rgb(0.906, 0.914, 0.929),
              rgb(0.51, 0.706, 1)},
        Given{Theme::nearBlack, rgb(0.071, 0.071, 0.078), rgb(0.098, 0.094, 0.133),
              withOpacity(Qt::black, 0.5), rgb(0.125, 0.122, 0.157), rgb(0.937, 0.914, 0.863),
              rgb(0.937, 0.906, 0.827), rgb(0.965, 0.651, 0.227)},
        Given{Theme::softGreen, rgb(0.906, 0.949, 0.914), rgb(0.969, 0.984, 0.973),
              withOpacity(rgb(0.11, 0.24, 0.2), 0.2), white, rgb(0.118, 0.169, 0.141),
              rgb(0.118, 0.227, 0.184), rgb(0.122, 0.227, 0.373)},
    };
    static_assert(given.size() == themes.size());
    for (const Given &each : given) {
        SCOPED_TRACE(displayName(each.theme).toStdString());
        const Palette &palette = paletteOf(each.theme);
        EXPECT_EQ(palette.sidebar, each.sidebar);
        EXPECT_EQ(palette.background, each.background);
        EXPECT_EQ(palette.hairline, each.hairline);
        EXPECT_EQ(palette.surface, each.surface);
        EXPECT_EQ(palette.ink, each.ink);
        EXPECT_EQ(palette.strongInk, each.strongInk);
        EXPECT_EQ(palette.accent, each.accent);
    }
}

TEST(PaletteTest, whatShinesThroughDoesSoAsMuchAsIsGiven) {
    for (const Theme theme : themes) {
        const Palette &palette = paletteOf(theme);
        EXPECT_EQ(palette.marker(), withOpacity(palette.ink, 0.1));
        EXPECT_EQ(palette.frameFill(), withOpacity(palette.ink, 0.05));
        EXPECT_EQ(palette.askingFill(), withOpacity(palette.ink, 0.04));
        EXPECT_EQ(palette.accentEdge(), withOpacity(palette.accent, 0.55));
    }
}

TEST(PaletteTest, crispWhitesComposerStandsOutByBeingDarker) {
    const Palette &palette = paletteOf(Theme::crispWhite);
    EXPECT_EQ(palette.background.rgb(), QColor(Qt::white).rgb());
    EXPECT_LT(palette.surface.lightnessF(), palette.background.lightnessF());
    for (const Theme theme : {Theme::lightBlue, Theme::pink, Theme::softGreen})
        EXPECT_EQ(paletteOf(theme).surface.rgb(), QColor(Qt::white).rgb());
}

TEST(PaletteTest, wordsThatWarnCanBeRead) {
    for (const Theme theme : themes) {
        const Palette &palette = paletteOf(theme);
        const QColor ground = mixed(palette.background, palette.bad(), palette.destructiveFill().alphaF());
        EXPECT_GE(contrast(palette.destructiveInk(), ground), 4.5) << displayName(theme).toStdString();
    }
}

TEST(PaletteTest, theSunHasItsThreeColors) {
    EXPECT_EQ(sunColors()[0], rgb(1, 0.914, 0.651));
    EXPECT_EQ(sunColors()[1], rgb(0.965, 0.651, 0.227));
    EXPECT_EQ(sunColors()[2], rgb(0.91, 0.51, 0.227));
}

TEST(PaletteTest, textOnTheAccentIsTheBestOfThree) {
    const QColor light = rgb(0.937, 0.953, 0.969);
    const QColor darkest = rgb(0.122, 0.106, 0.176);
    EXPECT_EQ(paletteOf(Theme::crispWhite).onAccent(), light);
    EXPECT_EQ(paletteOf(Theme::softGreen).onAccent(), light);
    EXPECT_EQ(paletteOf(Theme::pink).onAccent(), light);
    EXPECT_EQ(paletteOf(Theme::lightBlue).onAccent(), light);
    EXPECT_EQ(paletteOf(Theme::gray).onAccent(), darkest);
    EXPECT_EQ(paletteOf(Theme::nearBlack).onAccent(), darkest);
}

TEST(PaletteTest, everyTextCanBeReadInEveryTheme) {
    constexpr double readable = 4.5; // WCAG 2.1, level AA
    for (const Theme theme : themes) {
        const Palette &palette = paletteOf(theme);
        SCOPED_TRACE(displayName(theme).toStdString());
        for (const QColor &ground :
             {palette.background, palette.surface, palette.sidebar, palette.selection()})
            EXPECT_GE(contrast(palette.ink, ground), readable);
        EXPECT_GE(contrast(palette.secondaryInk(), palette.background), readable);
        EXPECT_GE(contrast(palette.secondaryInk(), palette.surface), readable);
        EXPECT_GE(contrast(palette.secondaryInk(), palette.sidebar), readable);
        const QColor frame = palette.frameFill();
        EXPECT_GE(contrast(palette.secondaryInk(), mixed(palette.background, palette.ink, frame.alphaF())),
                  readable);
        EXPECT_GE(contrast(palette.linkInk(), palette.background), readable);
        // The accents and the three colours on them are given; light blue's best is a little less.
        EXPECT_GE(contrast(palette.onAccent(), palette.accent), 4.1);
        EXPECT_GE(contrast(palette.onAccent(), palette.selectionOnAccent()), readable);
        EXPECT_GE(contrast(palette.onAccent(), palette.livelyAccent()), 3.3);
    }
}

TEST(PaletteTest, focusAndLampsCanBeToldFromTheirGround) {
    constexpr double visible = 3; // WCAG 2.1, non-text contrast
    for (const Theme theme : themes) {
        const Palette &palette = paletteOf(theme);
        SCOPED_TRACE(displayName(theme).toStdString());
        EXPECT_GE(contrast(palette.accent, palette.background), visible);
        EXPECT_GE(contrast(palette.bad(), palette.background), visible);
    }
}

TEST(PaletteTest, contrastIsThatOfTheStandard) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 1e-6);
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 1e-6);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(PaletteTest, themesAreCalledAsTheSettingsShowThem) {
    QStringList names;
    for (const Theme theme : themes)
        names.append(displayName(theme));
    EXPECT_EQ(names, (QStringList{u"Light blue"_s, u"Pink"_s, u"Crisp white"_s, u"Gray"_s, u"Near black"_s,
                                  u"Soft green"_s}));
}

TEST(PaletteTest, menusAndDialogsFollowTheTheme) {
    const QPalette colors = toolkitPalette(paletteOf(Theme::pink));
    EXPECT_EQ(colors.color(QPalette::Window), paletteOf(Theme::pink).background);
    EXPECT_EQ(colors.color(QPalette::WindowText), paletteOf(Theme::pink).ink);
    EXPECT_EQ(colors.color(QPalette::Highlight), paletteOf(Theme::pink).accent);
}
