#include "pages/PageColor.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr Color blue{0.13, 0.42, 0.86, 1};
constexpr Color green{0.11, 0.58, 0.33, 1};
constexpr Color amber{0.82, 0.55, 0.05, 1};
constexpr Color red{0.78, 0.22, 0.22, 1};
constexpr Color purple{0.48, 0.28, 0.76, 1};
constexpr Color pink{0.82, 0.27, 0.53, 1};
constexpr Color teal{0.09, 0.53, 0.56, 1};
constexpr Color gray{0.40, 0.43, 0.48, 1};

void expectAll(const QStringList &names, const Color &color) {
    for (const QString &name : names)
        EXPECT_EQ(pageColor(name), color) << name.toStdString();
}

} // namespace

TEST(PageColor, everyNameHasItsColor) {
    expectAll({u"blue"_s, u"info"_s}, blue);
    expectAll({u"green"_s, u"success"_s}, green);
    expectAll({u"amber"_s, u"warning"_s}, amber);
    expectAll({u"red"_s, u"danger"_s, u"error"_s}, red);
    expectAll({u"purple"_s}, purple);
    expectAll({u"pink"_s}, pink);
    expectAll({u"teal"_s}, teal);
    expectAll({u"gray"_s, u"grey"_s, u"muted"_s}, gray);
}

TEST(PageColor, theNameIsTrimmedAndItsCaseDoesNotMatter) {
    expectAll({u" Blue\t"_s, u"\u00A0INFO"_s}, blue);
}

TEST(PageColor, everyOtherNameIsNone) {
    for (const QString &name :
         {QString(), u""_s, u" "_s, u"orange"_s, u"bluegreen"_s, u"blue:"_s, u"blue\n"_s})
        EXPECT_FALSE(pageColor(name)) << name.toStdString();
}

TEST(SeriesColor, withoutAColorThePaletteRepeatsAfterEight) {
    const QList<Color> palette{blue, purple, teal, amber, pink, green, red, gray};
    for (qsizetype index = 0; index < 24; ++index) {
        EXPECT_EQ(seriesColor(index, {}), palette.at(index % 8));
        EXPECT_EQ(seriesColor(index, u"orange"), palette.at(index % 8));
    }
}

TEST(SeriesColor, aColorHasEightShades) {
    const QList<double> opacities{1.0, 0.72, 0.5, 0.34, 0.88, 0.6, 0.42, 0.26};
    for (qsizetype index = 0; index < 24; ++index)
        EXPECT_EQ(seriesColor(index, u"Success"), (Color{0.11, 0.58, 0.33, opacities.at(index % 8)}));
}

TEST(CalloutLabel, warningsDangersAndSuccessesHaveTheirOwn) {
    for (const QString &color : {u"warning"_s, u"amber"_s})
        EXPECT_EQ(calloutLabel(color), u"WARNING"_s);
    for (const QString &color : {u"danger"_s, u"error"_s, u"red"_s})
        EXPECT_EQ(calloutLabel(color), u"IMPORTANT"_s);
    for (const QString &color : {u"success"_s, u"green"_s})
        EXPECT_EQ(calloutLabel(color), u"TIP"_s);
    for (const QString &color : {u""_s, u"info"_s, u"purple"_s, u"blue"_s, u"nonsense"_s})
        EXPECT_EQ(calloutLabel(color), u"NOTE"_s);
}
