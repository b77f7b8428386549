#include "records/DecimalInteger.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(DecimalInteger, digitsAreANumberWithASignOrWithout) {
    EXPECT_EQ(decimalInteger(u"0"_s), 0);
    EXPECT_EQ(decimalInteger(u"007"_s), 7);
    EXPECT_EQ(decimalInteger(u"+12"_s), 12);
    EXPECT_EQ(decimalInteger(u"-12"_s), -12);
    EXPECT_EQ(decimalInteger(u"9223372036854775807"_s), std::numeric_limits<qint64>::max());
    EXPECT_EQ(decimalInteger(u"-9223372036854775808"_s), std::numeric_limits<qint64>::min());
}

TEST(DecimalInteger, nothingElseIsANumber) {
    for (const QString &text :
         {u""_s, u"+"_s, u"-"_s, u"+-1"_s, u" 1"_s, u"1 "_s, u"1,000"_s, u"0x10"_s, u"1e3"_s, u"1.0"_s,
          u"1a"_s, u"٣"_s, u"9223372036854775808"_s, u"-9223372036854775809"_s})
        EXPECT_FALSE(decimalInteger(text)) << text.toStdString();
}
