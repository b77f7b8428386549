#include "pages/ChartNumber.h"

#include <QByteArray>
#include <QList>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The same bits, or both no number.
bool isSame(double one, double other) {
    return (std::isnan(one) && std::isnan(other)) ||
           (one == other && std::signbit(one) == std::signbit(other));
}

double byStrtod(const QByteArray &text) {
    char *end = nullptr;
    const double value = std::strtod(text.constData(), &end);
    return text.isEmpty() || end != text.constData() + text.size() ? 1.0 : value;
}

} // namespace

TEST(ParseChartNumber, theSignsOfMoneyAndSharesAreLeftOut) {
    EXPECT_EQ(parseChartNumber(u"12.5%"), 12.5);
    EXPECT_EQ(parseChartNumber(u"$1,200"), 1200);
    EXPECT_EQ(parseChartNumber(u"-$3"), -3);
    EXPECT_EQ(parseChartNumber(u"1,2,3%%$4"), 1234);
    EXPECT_EQ(parseChartNumber(u" $ 5 % "), 5);
    EXPECT_EQ(parseChartNumber(u"\u00A07\u3000%"), 7);
}

TEST(ParseChartNumber, whatIsNoNumberIsOne) {
    for (const QString &text :
         {u""_s,      u"%"_s,   u"abc"_s, u"12 ms"_s, u"€5"_s,  u"1 000"_s,        u"1.2.3"_s,
          u"--3"_s,   u"+-3"_s, u"٣"_s,   u"−3"_s,    u"1e"_s,  u"0x"_s,           u"0xg"_s,
          u"0xinf"_s, u"."_s,   u"e5"_s,  u"infi"_s,  u"5\r"_s, QString(QChar(0)), u"5"_s + QChar(0),
          u"½"_s})
        EXPECT_EQ(parseChartNumber(text), 1.0) << text.toStdString();
}

TEST(ParseChartNumber, everyFormOfCIsRead) {
    EXPECT_EQ(parseChartNumber(u"1e3"), 1000);
    EXPECT_EQ(parseChartNumber(u"-3"), -3);
    EXPECT_EQ(parseChartNumber(u"+.5E-1"), 0.05);
    EXPECT_EQ(parseChartNumber(u"0x1.8p1"), 3);
    EXPECT_EQ(parseChartNumber(u"-Infinity"), -infinity);
    EXPECT_TRUE(std::isnan(parseChartNumber(u"NaN")));
    EXPECT_TRUE(isSame(parseChartNumber(u"-0"), -0.0));
}

TEST(ParseChartNumber, whatNoDoubleCanHoldIsInfiniteOrZero) {
    for (const char *text : {"1e308", "1e309", "-1e999", "1e-400", "-1e-400", "1e99999999999999999999",
                             "1e-99999999999999999999", "0e99999999999999999999", "0.000000000000001e320",
                             "100000000000000000e-400", "0x1p1024", "-0x1p99999999999", "0x1p-99999999999",
                             "0x0.0000000000000001p1100", "0x10000000000000000p-1200", "4.9e-324", "2e-324"})
        EXPECT_TRUE(isSame(parseChartNumber(QString::fromLatin1(text)), byStrtod(text))) << text;
}

TEST(ParseChartNumber, itAgreesWithTheLibraryOnWhatComesByChance) {
    std::mt19937 random(30);
    const QList<QByteArray> pieces{"1", "0",   "9",   "12",  ".", "e",  "E",   "-",     "+",    "0x", "p",
                                   "f", "inf", "nan", "(a)", " ", "e9", "e-9", "00000", "e308", "\f", "\r"};
    for (int round = 0; round < 20000; ++round) {
        QByteArray text;
        for (size_t count = random() % 6; count > 0; --count)
            text += pieces.at(static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size())));
        QByteArray bare = text;
        while (bare.endsWith(' '))
            bare.chop(1);
        ASSERT_TRUE(isSame(parseChartNumber(QString::fromLatin1(text)), byStrtod(bare)))
            << text.toStdString();
    }
}

TEST(FormatChartValue, wholeOnesHaveNoPointAndOthersOneDecimal) {
    EXPECT_EQ(formatChartValue(0), u"0"_s);
    EXPECT_EQ(formatChartValue(-0.0), u"0"_s);
    EXPECT_EQ(formatChartValue(1200), u"1200"_s);
    EXPECT_EQ(formatChartValue(-3), u"-3"_s);
    EXPECT_EQ(formatChartValue(12.5), u"12.5"_s);
    EXPECT_EQ(formatChartValue(1.04), u"1.0"_s);
    EXPECT_EQ(formatChartValue(-0.04), u"-0.0"_s);
    EXPECT_EQ(formatChartValue(0.25), u"0.2"_s);
    EXPECT_EQ(formatChartValue(0.75), u"0.8"_s);
    EXPECT_EQ(formatChartValue(4503599627370495.5), u"4503599627370495.5"_s);
}

TEST(FormatChartValue, whatSixtyFourBitsCannotHoldIsStillPrinted) {
    EXPECT_EQ(formatChartValue(-9223372036854775808.0), u"-9223372036854775808"_s);
    EXPECT_EQ(formatChartValue(9223372036854775808.0), u"9.22e+18"_s);
    EXPECT_EQ(formatChartValue(1e300), u"1e+300"_s);
    EXPECT_EQ(formatChartValue(infinity), u"∞"_s);
    EXPECT_EQ(formatChartValue(-infinity), u"-∞"_s);
    EXPECT_EQ(formatChartValue(std::nan("")), u"–"_s);
}
