#include "records/JsonFields.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// What the only element of a JSON array decodes to; nothing if it is refused.
template<typename T>
std::optional<T> decoded(const QByteArray &element) {
    try {
        T value{};
        decode(QJsonValue(decodeText('[' + element + ']').toArray().first()), value);
        return value;
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

struct Inner {
    qint64 number = 0;
};

struct Outer {
    QList<Inner> list;
    std::optional<QString> note;
    bool marked = true;
};

constexpr auto innerFields = [](auto &record, auto &value) { record.required("number"_L1, value.number); };

constexpr auto outerFields = [](auto &record, auto &value) {
    record.required("list"_L1, value.list);
    record.optional("note"_L1, value.note);
    record.defaulted("marked"_L1, value.marked);
};

QJsonValue encode(const Inner &value) {
    return encodeFields(value, innerFields);
}

void decode(const QJsonValue &json, Inner &value) {
    decodeFields(json, value, innerFields);
}

Outer outer(const QByteArray &text) {
    Outer value;
    decodeFields(decodeText(text), value, outerFields);
    return value;
}

std::string problemOf(const QByteArray &text) {
    try {
        outer(text);
        return "none";
    } catch (const DecodingError &error) {
        return error.what();
    }
}

} // namespace

TEST(JsonFields, anIntegerIsAWholeNumberThat64BitsHold) {
    EXPECT_EQ(decoded<qint64>("0"), 0);
    EXPECT_EQ(decoded<qint64>("1"), 1);
    EXPECT_EQ(decoded<qint64>("-1"), -1);
    EXPECT_EQ(decoded<qint64>("1.0"), 1);
    EXPECT_EQ(decoded<qint64>("1e3"), 1000);
    EXPECT_EQ(decoded<qint64>("9007199254740993"), 9007199254740993);
    EXPECT_EQ(decoded<qint64>("9223372036854775807"), std::numeric_limits<qint64>::max());
    EXPECT_EQ(decoded<qint64>("-9223372036854775808"), std::numeric_limits<qint64>::min());
}

TEST(JsonFields, whatIsNoIntegerIsRefused) {
    for (const char *text : {"1.5", "0.1", "true", "false", "null", "\"1\"", "[1]", "{}", "1e-1",
                             "9223372036854775808", "1e300"})
        EXPECT_EQ(decoded<qint64>(text), std::nullopt) << text;
}

TEST(JsonFields, aBooleanIsNoNumberAndANumberNoBoolean) {
    EXPECT_EQ(decoded<double>("true"), std::nullopt);
    EXPECT_EQ(decoded<bool>("1"), std::nullopt);
    EXPECT_EQ(decoded<bool>("\"true\""), std::nullopt);
    EXPECT_EQ(decoded<bool>("null"), std::nullopt);
    EXPECT_EQ(decoded<bool>("false"), false);
    EXPECT_EQ(decoded<double>("1"), 1.0);
    EXPECT_EQ(decoded<double>("0.7"), 0.7);
    EXPECT_EQ(decoded<double>("\"0.7\""), std::nullopt);
}

TEST(JsonFields, aStringIsOnlyAString) {
    EXPECT_EQ(decoded<QString>("\"\""), QString());
    for (const char *text : {"1", "true", "null", "[]", "{}"})
        EXPECT_EQ(decoded<QString>(text), std::nullopt) << text;
}

TEST(JsonFields, integersOf64BitsAreWrittenExactly) {
    EXPECT_EQ(encodeRecord(QList<qint64>{std::numeric_limits<qint64>::max()}),
              "[\n    9223372036854775807\n]\n");
}

TEST(JsonFields, aUrlIsAStringThatIsOne) {
    EXPECT_EQ(decoded<QUrl>("\"https://example.org/a%20b?c=%C3%A4\""),
              QUrl(u"https://example.org/a%20b?c=%C3%A4"_s));
    EXPECT_EQ(encode(QUrl(u"https://example.org/a b?ä"_s)),
              QJsonValue(u"https://example.org/a%20b?%C3%A4"_s));
    for (const char *text : {"\"\"", "\"http://[\"", "\"https://example.org/a b\"", "1", "null"})
        EXPECT_EQ(decoded<QUrl>(text), std::nullopt) << text;
}

TEST(JsonFields, aListWithOneBadElementIsRefusedWhole) {
    EXPECT_EQ(decoded<QList<qint64>>("[1, 2]"), (QList<qint64>{1, 2}));
    EXPECT_EQ(decoded<QList<qint64>>("[]"), QList<qint64>());
    for (const char *text : {"[1, null]", "[1, 1.5]", "{}", "1", "null"})
        EXPECT_EQ(decoded<QList<qint64>>(text), std::nullopt) << text;
}

TEST(JsonFields, aMissingKeyIsNothingWhereOptionalAndTheDefaultWhereThereIsOne) {
    const Outer value = outer(R"({"list": [], "unknown": 1})");
    EXPECT_EQ(value.note, std::nullopt);
    EXPECT_TRUE(value.marked);
}

TEST(JsonFields, aNullCountsAsAbsentOnlyWhereOptional) {
    EXPECT_EQ(outer(R"({"list": [], "note": null})").note, std::nullopt);
    EXPECT_EQ(problemOf(R"({"list": [], "marked": null})"), "marked: not a Boolean");
    EXPECT_EQ(problemOf(R"({"list": null})"), "list: not an array");
}

TEST(JsonFields, theReasonLeadsToThePlace) {
    EXPECT_EQ(problemOf("{}"), "list: missing");
    EXPECT_EQ(problemOf("[]"), "not an object");
    EXPECT_EQ(problemOf(R"({"list": [{"number": 1}, {}]})"), "list: number: missing");
    EXPECT_EQ(problemOf(R"({"list": [{"number": "1"}]})"), "list: number: not a number");
    EXPECT_EQ(problemOf(R"({"list": [7]})"), "list: not an object");
    EXPECT_EQ(problemOf(R"({"list": [], "note": 1})"), "note: not a string");
}

TEST(JsonFields, anAbsentOptionalFieldIsLeftOutAndADefaultedOneIsWritten) {
    const QJsonObject object = encodeFields(Outer{}, outerFields).toObject();
    EXPECT_EQ(object.keys(), (QStringList{u"list"_s, u"marked"_s}));
}
