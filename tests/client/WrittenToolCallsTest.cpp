#include "client/WrittenToolCalls.h"

#include "client/PlainTextRepair.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Calls = QList<ToolCall>;

/// The only call in a reply that is nothing else.
ToolCall only(const QString &body) {
    const ExtractedToolCalls found = extractToolCalls(u"<tool_call>"_s + body + u"</tool_call>"_s);
    EXPECT_EQ(found.calls.size(), 1) << body.toStdString();
    EXPECT_EQ(found.text, u""_s);
    return found.calls.value(0);
}

void expectNone(const QString &body) {
    const ExtractedToolCalls found = extractToolCalls(u"a<tool_call>"_s + body + u"</tool_call>b"_s);
    EXPECT_EQ(found, (ExtractedToolCalls{u"ab"_s, {}})) << body.toStdString();
}

} // namespace

TEST(ExtractToolCalls, aCallInJsonIsRead) {
    EXPECT_EQ(only(uR"({"name":"web_search","arguments":{"query":"x"}})"_s),
              (ToolCall{u"xml_0"_s, u"web_search"_s, uR"({"query":"x"})"_s}));
}

TEST(ExtractToolCalls, aCallInTagsIsRead) {
    EXPECT_EQ(only(u"<function=fetch_page><parameter=url>u</parameter></function>"_s),
              (ToolCall{u"xml_0"_s, u"fetch_page"_s, uR"({"url":"u"})"_s}));
}

TEST(ExtractToolCalls, theNumberOfABlockCountsThoseWithoutACall) {
    EXPECT_EQ(extractToolCalls(u"<tool_call>no</tool_call><tool_call>{\"name\":\"f\"}</tool_call>"_s),
              (ExtractedToolCalls{u""_s, {{u"xml_1"_s, u"f"_s, u"{}"_s}}}));
}

TEST(ExtractToolCalls, theTextAroundTheBlocksStaysAndIsTrimmed) {
    const ExtractedToolCalls found = extractToolCalls(
        u"\n Let me look.\n<tool_call>\n {\"name\":\"f\"}\u00A0\n</tool_call>\n and <tool_call>{\"name\":\"g\"}</tool_call>\r\n"_s);
    EXPECT_EQ(found.text, u"Let me look.\n\n and"_s);
    EXPECT_EQ(found.calls, (Calls{{u"xml_0"_s, u"f"_s, u"{}"_s}, {u"xml_1"_s, u"g"_s, u"{}"_s}}));
}

TEST(ExtractToolCalls, withoutATagTheReplyIsLeftAlone) {
    for (const QString &text :
         {u""_s, u" a \n"_s, u" <TOOL_CALL>{\"name\":\"f\"}</TOOL_CALL> "_s, u" </tool_call> "_s})
        EXPECT_EQ(extractToolCalls(text), (ExtractedToolCalls{text, {}})) << text.toStdString();
}

TEST(ExtractToolCalls, aTagWithoutAnEndStays) {
    EXPECT_EQ(extractToolCalls(u" a <tool_call>{\"name\":\"f\"} "_s),
              (ExtractedToolCalls{u"a <tool_call>{\"name\":\"f\"}"_s, {}}));
    EXPECT_EQ(extractToolCalls(u"<tool_call>{\"name\":\"f\"}</tool_call>a<tool_call>b"_s),
              (ExtractedToolCalls{u"a<tool_call>b"_s, {{u"xml_0"_s, u"f"_s, u"{}"_s}}}));
}

TEST(ExtractToolCalls, aBlockWithoutACallIsRemovedAllTheSame) {
    for (const QString &body :
         {u""_s, u"no"_s, u"{}"_s, uR"({"arguments":{}})"_s, uR"({"name":7})"_s, u"[1]"_s, u"\"f\""_s,
          u"{\"name\":\"f\""_s, u"<Function=f>"_s, u"<function f>"_s})
        expectNone(body);
}

TEST(ExtractToolCalls, argumentsThatAreATextStayAsTheyAre) {
    EXPECT_EQ(only(uR"({"name":"f","arguments":"{\"a\": 1"})"_s).arguments, u"{\"a\": 1"_s);
    EXPECT_EQ(only(uR"({"name":"f","arguments":""})"_s).arguments, u""_s);
}

TEST(ExtractToolCalls, otherArgumentsAreJsonOrNone) {
    EXPECT_EQ(only(uR"({"name":"f","arguments":[1, {"a": "ä/"}, null]})"_s).arguments,
              uR"([1,{"a":"ä/"},null])"_s);
    for (const QString &value : {u"null"_s, u"7"_s, u"true"_s, u"{}"_s})
        EXPECT_EQ(only(u"{\"name\":\"f\",\"arguments\":"_s + value + u'}').arguments, u"{}"_s);
    EXPECT_EQ(only(uR"({"name":"f","arguments":[]})"_s).arguments, u"[]"_s);
}

TEST(ExtractToolCalls, whatIsNoCallInJsonMayBeOneInTags) {
    EXPECT_EQ(only(u"{\"name\":7}<function=f>"_s), (ToolCall{u"xml_0"_s, u"f"_s, u"{}"_s}));
    EXPECT_EQ(only(uR"({"code":"<function=f>"})"_s), (ToolCall{u"xml_0"_s, u"f"_s, u"{}"_s}));
}

TEST(ParseToolCallBody, theNameEndsWithTheTagTheLineOrTheBody) {
    EXPECT_EQ(parseToolCallBody(u"<function=f>x", 3), (ToolCall{u"xml_3"_s, u"f"_s, u"{}"_s}));
    EXPECT_EQ(parseToolCallBody(u"<function= f \nx>", 0), (ToolCall{u"xml_0"_s, u" f "_s, u"{}"_s}));
    EXPECT_EQ(parseToolCallBody(u"x<function=f", 0), (ToolCall{u"xml_0"_s, u"f"_s, u"{}"_s}));
    EXPECT_EQ(parseToolCallBody(u"<function=", 0), (ToolCall{u"xml_0"_s, u""_s, u"{}"_s}));
    EXPECT_EQ(parseToolCallBody(u"<function=f><function=g>", 0), (ToolCall{u"xml_0"_s, u"f"_s, u"{}"_s}));
    EXPECT_FALSE(parseToolCallBody(u"", 0));
}

TEST(ParseToolCallBody, valuesAreTrimmedTextsAndKeysAreNot) {
    EXPECT_EQ(parseToolCallBody(
                  u"<function=f>\n<parameter= a >\n 1\n2 \n</parameter>\n<parameter=b>7</parameter>", 0)
                  ->arguments,
              uR"({" a ":"1\n2","b":"7"})"_s);
}

TEST(ParseToolCallBody, ofTwoParametersWithOneKeyTheLastCounts) {
    EXPECT_EQ(
        parseToolCallBody(u"<function=f><parameter=a>1</parameter><parameter=a>2</parameter>", 0)->arguments,
        uR"({"a":"2"})"_s);
}

TEST(ParseToolCallBody, onlyWholeParametersBehindTheFunctionCount) {
    EXPECT_EQ(parseToolCallBody(u"<parameter=a>1</parameter><function=f><parameter=b>2", 0)->arguments,
              u"{}"_s);
    EXPECT_EQ(
        parseToolCallBody(u"<function=f><parameter=>1</parameter><parameter=b>2</parameter>", 0)->arguments,
        uR"({"b":"2"})"_s);
    EXPECT_EQ(parseToolCallBody(u"<function=f><Parameter=a>1</parameter>", 0)->arguments, u"{}"_s);
    EXPECT_EQ(parseToolCallBody(u"<function=f><parameter=a\nb>1</parameter>", 0)->arguments,
              uR"({"a\nb":"1"})"_s);
    EXPECT_EQ(parseToolCallBody(u"<function=f><parameter=a><parameter=b>1</parameter>", 0)->arguments,
              uR"({"a":"<parameter=b>1"})"_s);
}

TEST(ExtractToolCalls, itAgreesWithRegularExpressions) {
    std::mt19937 random(41);
    qsizetype calls = 0;
    for (int round = 0; round < 20000; ++round) {
        // Within a block, so that there is something to find.
        const QString text = taggedText(random) + u"<tool_call>"_s + taggedText(random) + u"</tool_call>"_s +
                             taggedText(random);
        const ExtractedToolCalls found = extractToolCalls(text);
        ASSERT_EQ(found, plainlyExtractedToolCalls(text)) << text.toStdString();
        calls += found.calls.size();
    }
    EXPECT_GT(calls, 3000);
}

TEST(ExtractToolCalls, twoMegabytesOfTagsTakeOnePass) {
    const QStringList units{u"<tool_call>"_s,
                            u"<tool_call></tool_call>"_s,
                            u"<tool_call>{</tool_call>"_s,
                            u"<tool_call><function=f></tool_call>"_s,
                            u"<parameter="_s,
                            u"<parameter=>"_s,
                            u"<parameter=a>"_s,
                            u"<function="_s,
                            u"<parameter=a>b</parameter>"_s,
                            u"["_s,
                            u"{\"a\":"_s};
    for (const QString &unit : units) {
        const QString many = unit.repeated(2'000'000 / unit.size());
        QElapsedTimer timer;
        timer.start();
        extractToolCalls(many);
        extractToolCalls(u"<tool_call><function=f>"_s + many + u"</tool_call>"_s);
        EXPECT_LT(timer.elapsed(), 5000) << unit.toStdString();
    }
}

TEST(ExtractToolCalls, fiftyThousandParametersAreKept) {
    QString body = u"<function=f>"_s;
    for (int index = 0; index < 50'000; ++index)
        body += u"<parameter=%1>v</parameter>"_s.arg(50'000 - index);
    QElapsedTimer timer;
    timer.start();
    const ToolCall call = only(body);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_EQ(QJsonDocument::fromJson(call.arguments.toUtf8()).object().size(), 50'000);
}
