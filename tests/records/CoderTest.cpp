#include "records/Coder.h"

#include <QJsonArray>
#include <QJsonObject>

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString reencoded(const QString &date) {
    const std::optional<QDateTime> decoded = decodeDate(date);
    return decoded ? encodeDate(*decoded) : u"nothing"_s;
}

} // namespace

TEST(Coder, keysComeOutSortedAndTheTextIndented) {
    const QJsonObject object{{u"b"_s, 1}, {u"a"_s, QJsonArray{true}}, {u"B"_s, u"x"_s}};
    EXPECT_EQ(encodeText(object),
              "{\n    \"B\": \"x\",\n    \"a\": [\n        true\n    ],\n    \"b\": 1\n}\n");
}

TEST(Coder, twoEncodingsOfTheSameValueAreByteIdentical) {
    const QJsonObject one{{u"b"_s, 1}, {u"a"_s, 0.1}};
    const QJsonObject other{{u"a"_s, 0.1}, {u"b"_s, 1}};
    EXPECT_EQ(encodeText(one), encodeText(other));
    EXPECT_EQ(encodeText(decodeText(encodeText(one))), encodeText(one));
}

TEST(Coder, anArrayIsEncodedToo) {
    EXPECT_EQ(encodeText(QJsonArray()), "[\n]\n");
}

TEST(Coder, aNumberThatIsNotFiniteCannotBeEncodedHoweverDeepItLies) {
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(encodeText(QJsonArray{value}), EncodingError);
        EXPECT_THROW(encodeText(QJsonObject{{u"a"_s, QJsonArray{QJsonObject{{u"b"_s, value}}}}}),
                     EncodingError);
    }
}

TEST(Coder, onlyAnObjectOrAnArrayIsDecoded) {
    EXPECT_TRUE(decodeText("{}").isObject());
    EXPECT_TRUE(decodeText(" [1] ").isArray());
    for (const char *text : {"", "oops", "1", "null", "\"text\"", "{", "[1] x", "{\"a\":}", "[1,]", "[01]",
                             "[\"\xff\"]", "[1e400]"})
        EXPECT_THROW(decodeText(text), DecodingError) << text;
}

TEST(Coder, textOfEveryKindComesBackAsItWas) {
    const QString text = u"\"\\/\b\f\n\r\t\u0001\u007f\u2028 Grüße 世界 \U0001F1E9\U0001F1EA"_s + QChar(0);
    EXPECT_EQ(decodeText(encodeText(QJsonArray{text})).toArray().first().toString(), text);
}

TEST(Coder, aDateIsWrittenInUtcWithWholeSeconds) {
    const QDateTime date(QDate(2026, 11, 15), QTime(13, 18, 58), Qt::UTC);
    EXPECT_EQ(encodeDate(date), u"2026-11-15T13:18:58Z"_s);
    EXPECT_EQ(encodeDate(date.addMSecs(999)), u"2026-11-15T13:18:58Z"_s);
    EXPECT_EQ(encodeDate(date.toOffsetFromUtc(5400)), u"2026-11-15T13:18:58Z"_s);
    EXPECT_EQ(encodeDate(QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59, 1), Qt::UTC)),
              u"1969-12-31T23:59:59Z"_s);
    EXPECT_EQ(encodeDate(QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC)), u"0001-01-01T00:00:00Z"_s);
}

TEST(Coder, aDateWithoutAFormCannotBeEncoded) {
    EXPECT_THROW(encodeDate(QDateTime()), EncodingError);
    EXPECT_THROW(encodeDate(QDateTime(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC)), EncodingError);
    EXPECT_THROW(encodeDate(QDateTime(QDate(-1, 12, 31), QTime(0, 0), Qt::UTC)), EncodingError);
}

TEST(Coder, aDateIsReadInAnyZone) {
    EXPECT_EQ(decodeDate(u"2026-11-15T13:18:58Z"),
              QDateTime(QDate(2026, 11, 15), QTime(13, 18, 58), Qt::UTC));
    EXPECT_EQ(reencoded(u"2026-11-15T13:18:58+05:30"_s), u"2026-11-15T07:48:58Z"_s);
    EXPECT_EQ(reencoded(u"2026-12-31T23:00:00-01:30"_s), u"2027-01-01T00:30:00Z"_s);
    EXPECT_EQ(reencoded(u"2024-02-29T00:00:00-00:00"_s), u"2024-02-29T00:00:00Z"_s);
    EXPECT_EQ(decodeDate(u"2026-11-15T13:18:58+05:30")->timeSpec(), Qt::UTC);
}

TEST(Coder, everyDayOfFourCenturiesComesBackAsItWas) {
    QDateTime date(QDate(1899, 12, 31), QTime(23, 59, 59), Qt::UTC);
    for (int day = 0; day < 400 * 366; ++day, date = date.addDays(1)) {
        const QString text = encodeDate(date);
        ASSERT_EQ(text, date.toString(Qt::ISODate));
        ASSERT_EQ(decodeDate(text), date);
    }
}

TEST(Coder, aDateOfAnotherFormIsNone) {
    for (const char16_t *text : {u"",
                                 u"2026-11-15",
                                 u"2026-11-15T13:18:58",
                                 u"2026-11-15T13:18:58.5Z",
                                 u"2026-11-15T13:18:58,5Z",
                                 u"2026-11-15T13:18Z",
                                 u"2026-11-15 13:18:58Z",
                                 u"2026-11-15t13:18:58Z",
                                 u"2026-11-15T13:18:58z",
                                 u"2026-11-15T13:18:58ZZ",
                                 u" 2026-11-15T13:18:58Z",
                                 u"2026-11-15T13:18:58Z ",
                                 u"2026-11-15T13:18:58+0530",
                                 u"2026-11-15T13:18:58+05",
                                 u"2026-11-15T13:18:58+5:30",
                                 u"2026-11-15T13:18:58+24:00",
                                 u"2026-11-15T13:18:58+05:60",
                                 u"26-11-15T13:18:58Z",
                                 u"12026-11-15T13:18:58Z",
                                 u"2026/11/15T13:18:58Z",
                                 u"-026-11-15T13:18:58Z",
                                 u"2026-11-15T13:18:5\u0668Z",
                                 u"2026-11-15T1:18:58Z"})
        EXPECT_EQ(decodeDate(text), std::nullopt) << QString::fromUtf16(text).toStdString();
}

TEST(Coder, aDayOrATimeThatDoesNotExistIsNone) {
    for (const char16_t *text :
         {u"2026-02-29T00:00:00Z", u"2100-02-29T00:00:00Z", u"2026-04-31T00:00:00Z", u"2026-13-01T00:00:00Z",
          u"2026-00-01T00:00:00Z", u"2026-01-00T00:00:00Z", u"2026-01-32T00:00:00Z", u"2026-01-01T24:00:00Z",
          u"2026-01-01T00:60:00Z", u"2026-01-01T00:00:60Z", u"0000-01-01T00:00:00Z"})
        EXPECT_EQ(decodeDate(text), std::nullopt) << QString::fromUtf16(text).toStdString();
}

TEST(Coder, aUuidIsWrittenInUpperCaseWithoutBraces) {
    EXPECT_EQ(encodeUuid(QUuid(u"{5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b11}"_s)),
              u"5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11"_s);
    EXPECT_EQ(encodeUuid(QUuid()), u"00000000-0000-0000-0000-000000000000"_s);
}

TEST(Coder, aUuidOfEitherCaseIsRead) {
    const QUuid id(u"{5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b11}"_s);
    EXPECT_EQ(decodeUuid(u"5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b11"), id);
    EXPECT_EQ(decodeUuid(u"5F0C1B9E-6F0A-4a53-9d3e-0C6A8F1F2B11"), id);
    EXPECT_EQ(decodeUuid(u"00000000-0000-0000-0000-000000000000"), QUuid());
}

TEST(Coder, everyUuidComesBackAsItWas) {
    for (int count = 0; count < 1000; ++count) {
        const QUuid id = QUuid::createUuid();
        ASSERT_EQ(encodeUuid(id), id.toString(QUuid::WithoutBraces).toUpper());
        ASSERT_EQ(decodeUuid(encodeUuid(id)), id);
    }
}

TEST(Coder, aUuidOfAnotherFormIsNone) {
    for (const char16_t *text :
         {u"", u"{5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b11}", u"5f0c1b9e6f0a4a539d3e0c6a8f1f2b11",
          u"5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b1", u"5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b111",
          u"5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b1g", u"5f0c1b9e-6f0a-4a53-9d3e00c6a8f1f2b11",
          u"5f0c1b9-e6f0a-4a53-9d3e-0c6a8f1f2b11", u" 5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b1",
          u"5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b1\u0661"})
        EXPECT_EQ(decodeUuid(text), std::nullopt) << QString::fromUtf16(text).toStdString();
}
