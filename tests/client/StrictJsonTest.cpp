#include "client/StrictJson.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(StrictJson, whatIsToTheLetterStaysAsItIs) {
    for (const QString &text :
         {u"{}"_s, u" [ ] \n"_s, uR"({ "query" : "x" })"_s, uR"({"a":[0,-1,2.50,1e5,1E-05,-0.0],"b":null})"_s,
          uR"({"q":"\" \\ \/ \b\f\n\r\t \u00e9 \ud83c\udf89 é 🎉","t":true,"f":false})"_s,
          uR"({"":{"":[[]]}})"_s,
          uR"({"\uD83C\uDF89":"\uDfFf"})"_s.replace(u"\\uDfFf"_s, u"\\uDbFf\\uDcFf"_s)})
        EXPECT_EQ(strictJson(text), text);
}

TEST(StrictJson, whatOnlyQtReadsIsWrittenAnew) {
    EXPECT_EQ(strictJson(uR"({"query": "it\'s"})"_s), uR"({"query":"it's"})"_s);
    EXPECT_EQ(strictJson(u"{\"query\": \"a\nb\tc\"}"_s), uR"({"query":"a\nb\tc"})"_s);
    EXPECT_EQ(strictJson(u"[\"\x01\"]"_s), uR"(["\u0001"])"_s);
    EXPECT_EQ(strictJson(uR"([1.])"_s), u"[1]"_s);
}

TEST(StrictJson, halfAPairIsAReplacementCharacter) {
    for (const QString &half :
         {u"\\ud83d"_s, u"\\uD83D"_s, u"\\udf89"_s, u"\\udf89\\ud83d"_s, u"\\ud83d\\u0041"_s})
        EXPECT_TRUE(strictJson(u"[\"x"_s + half + u"\"]"_s).startsWith(uR"(["x\ufffd)"_s))
            << half.toStdString();
}

TEST(StrictJson, aBackslashBeforeTheLettersOfAnEscapeIsNone) {
    const QJsonObject object{{u"a"_s, u"\\ud83d"_s}, {u"b"_s, u"\\\xD83D\\"_s}, {u"c"_s, u"🎉\xDF89"_s}};
    EXPECT_EQ(strictJson(QJsonDocument(object)), R"({"a":"\\ud83d","b":"\\\ufffd\\","c":"🎉\ufffd"})");
}

TEST(StrictJson, whatNobodyReadsIsNothing) {
    for (const QString &text : {u""_s, u"query"_s, u"{\"query\":\"x"_s, u"{\"a\" 1}"_s, u"[01]"_s, u"{} x"_s})
        EXPECT_EQ(strictJson(text), QString()) << text.toStdString();
}

TEST(StrictJson, aVeryLongTextIsReadAsWell) {
    const QString text = u"{\"query\":\""_s + u"a\\n"_s.repeated(1'000'000) + u"\"}"_s;
    EXPECT_EQ(strictJson(text), text);
}
