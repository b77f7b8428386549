#include "records/Formatters.h"

#include <clocale>
#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Formatters, bytesAreToldInDecimalUnits) {
    EXPECT_EQ(formatBytes(10'000'000'000), u"10 GB"_s);
    EXPECT_EQ(formatBytes(9'999'999'999), u"10.0 GB"_s);
    EXPECT_EQ(formatBytes(9'940'000'000), u"9.9 GB"_s);
    EXPECT_EQ(formatBytes(1'000'000'000), u"1.0 GB"_s);
    EXPECT_EQ(formatBytes(999'999'999), u"1000 MB"_s);
    EXPECT_EQ(formatBytes(640'000'000), u"640 MB"_s);
    EXPECT_EQ(formatBytes(19'762'149'024), u"20 GB"_s);
    EXPECT_EQ(formatBytes(0), u"0 MB"_s);
    EXPECT_EQ(formatBytes(std::numeric_limits<qint64>::max()), u"9223372037 GB"_s);
}

TEST(Formatters, anExactHalfGoesToTheEvenNumberAsInC) {
    EXPECT_EQ(formatBytes(500'000), u"0 MB"_s);
    EXPECT_EQ(formatBytes(1'500'000), u"2 MB"_s);
    EXPECT_EQ(formatBytes(2'500'000), u"2 MB"_s);
    EXPECT_EQ(formatBytes(12'500'000'000), u"12 GB"_s);
    EXPECT_EQ(formatBytes(1'250'000'000), u"1.2 GB"_s);
}

TEST(Formatters, theLocaleDoesNotMatter) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(formatBytes(9'900'000'000), u"9.9 GB"_s);
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Formatters, aTimeThatIsNotKnownIsBeingCalculated) {
    for (const double seconds :
         {0.0, -0.0, -1.0, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(formatTimeLeft(seconds), u"calculating time left"_s) << seconds;
}

TEST(Formatters, belowAMinuteAndAHalfItIsAboutAMinute) {
    EXPECT_EQ(formatTimeLeft(0.001), u"about a minute left"_s);
    EXPECT_EQ(formatTimeLeft(89.9), u"about a minute left"_s);
}

TEST(Formatters, minutesAreRoundedWithHalvesUp) {
    EXPECT_EQ(formatTimeLeft(90), u"about 2 min left"_s);
    EXPECT_EQ(formatTimeLeft(149.9), u"about 2 min left"_s);
    EXPECT_EQ(formatTimeLeft(150), u"about 3 min left"_s);
    EXPECT_EQ(formatTimeLeft(3600), u"about 60 min left"_s);
    EXPECT_EQ(formatTimeLeft(6e18), u"about 100000000000000000 min left"_s);
    EXPECT_TRUE(formatTimeLeft(std::numeric_limits<double>::max()).endsWith(u" min left"_s));
}
