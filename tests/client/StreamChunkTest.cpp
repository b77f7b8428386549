#include "client/StreamChunk.h"

#include "support/Script.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

StreamChunk parsed(const QByteArray &line) {
    const auto chunk = parseStreamLine(line);
    EXPECT_TRUE(chunk) << line.toStdString();
    return chunk.value_or(StreamChunk());
}

QByteArray dataLine(const QJsonObject &json) {
    return "data: " + QJsonDocument(json).toJson(QJsonDocument::Compact);
}

QByteArray toolLine(const QByteArray &calls) {
    return R"(data: {"choices":[{"delta":{"tool_calls":)" + calls + "}}]}";
}

} // namespace

TEST(ParseStreamLine, linesWithoutDataGiveNothing) {
    for (const char *line :
         {"", ":", ": keep-alive", "event: message", "id: 7", "retry: 10", " data: {}", "Data: {}", "dat"})
        EXPECT_FALSE(parseStreamLine(line)) << line;
}

TEST(ParseStreamLine, theClosingLineGivesDoneWithAndWithoutABlank) {
    const StreamChunk done{.content = {}, .reasoning = {}, .toolDeltas = {}, .finishReason = u"done"_s};
    EXPECT_EQ(parsed("data:[DONE]"), done);
    EXPECT_EQ(parsed("data: [DONE]"), done);
}

TEST(ParseStreamLine, onlyOneBlankIsTakenAway) {
    EXPECT_FALSE(parseStreamLine("data:  [DONE]"));
    EXPECT_FALSE(parseStreamLine("data: [DONE] "));
}

TEST(ParseStreamLine, malformedLinesGiveNothing) {
    for (const char *line : {"data:", "data: ", "data: x", "data: {", "data: []", "data: 7", "data: {}",
                             R"(data: {"choices":{}})", R"(data: {"choices":[]})", R"(data: {"choices":[7]})",
                             R"(data: {"choices":[{"delta":{}},7]})", R"(data: {"error":{"message":"no"}})"})
        EXPECT_FALSE(parseStreamLine(line)) << line;
}

TEST(ParseStreamLine, textAndReasoningAreRead) {
    const StreamChunk chunk =
        parsed(dataLine(completionChunk({{u"content"_s, u"Grüße"_s}, {u"reasoning_content"_s, u"hm"_s}})));
    EXPECT_EQ(chunk.content, u"Grüße"_s);
    EXPECT_EQ(chunk.reasoning, u"hm"_s);
    EXPECT_TRUE(chunk.toolDeltas.isEmpty());
    EXPECT_FALSE(chunk.finishReason);
}

TEST(ParseStreamLine, whatIsNoTextIsEmpty) {
    EXPECT_EQ(parsed(R"(data: {"choices":[{"delta":{"content":null,"reasoning_content":7}}]})"),
              StreamChunk());
}

TEST(ParseStreamLine, theFinishReasonIsReadAndANullIsNone) {
    EXPECT_EQ(parsed(dataLine(completionChunk({}, u"length"_s))).finishReason, u"length"_s);
    EXPECT_FALSE(parsed(R"(data: {"choices":[{"delta":{},"finish_reason":null}]})").finishReason);
}

TEST(ParseStreamLine, aChoiceWithoutADeltaStillGivesAChunk) {
    EXPECT_EQ(parsed(R"(data: {"choices":[{"finish_reason":"stop"}]})").finishReason, u"stop"_s);
    EXPECT_EQ(parsed(R"(data: {"choices":[{"delta":7}]})"), StreamChunk());
}

TEST(ParseStreamLine, onlyTheFirstChoiceCounts) {
    EXPECT_EQ(parsed(R"(data: {"choices":[{"delta":{"content":"a"}},{"delta":{"content":"b"}}]})").content,
              u"a"_s);
}

TEST(ParseStreamLine, toolCallFragmentsComeInWireOrder) {
    const StreamChunk chunk = parsed(toolLine(
        R"([{"index":1,"id":"b","function":{"name":"two","arguments":"{"}},{"index":0,"function":{"arguments":"}"}}])"));
    const QList<ToolCallDelta> expected{{1, u"b"_s, u"two"_s, u"{"_s},
                                        {0, std::nullopt, std::nullopt, u"}"_s}};
    EXPECT_EQ(chunk.toolDeltas, expected);
}

TEST(ParseStreamLine, aFragmentWithoutAnIntegerIndexIsFiledUnderZero) {
    const StreamChunk chunk =
        parsed(toolLine(R"([{"id":"a"},{"index":"2"},{"index":1.5},{"index":true},{"index":null}])"));
    for (const ToolCallDelta &delta : chunk.toolDeltas)
        EXPECT_EQ(delta.index, 0);
    EXPECT_EQ(chunk.toolDeltas.size(), 5);
}

TEST(ParseStreamLine, argumentsThatAreNoTextAreAbsent) {
    const StreamChunk chunk =
        parsed(toolLine(R"([{"index":0,"function":{"name":"f","arguments":{"a":1}}}])"));
    EXPECT_EQ(chunk.toolDeltas.first().name, u"f"_s);
    EXPECT_FALSE(chunk.toolDeltas.first().arguments);
}

TEST(ParseStreamLine, aCallWithoutAFunctionHasNeitherNameNorArguments) {
    EXPECT_EQ(parsed(toolLine(R"([{"index":3,"id":"x"}])")).toolDeltas,
              (QList<ToolCallDelta>{{3, u"x"_s, {}, {}}}));
}

TEST(ParseStreamLine, callsThatAreNoArrayOfObjectsGiveNone) {
    EXPECT_TRUE(parsed(toolLine(R"({"index":0})")).toolDeltas.isEmpty());
    EXPECT_TRUE(parsed(toolLine(R"([{"index":0},7])")).toolDeltas.isEmpty());
}

TEST(ParseStreamLine, anEventWithoutChoicesIsSkipped) {
    EXPECT_FALSE(parseStreamLine(R"(data: {"choices":[],"usage":{"total_tokens":7}})"));
}

TEST(ToolCallAssembler, argumentsAccumulateAndNamesAreReplaced) {
    ToolCallAssembler assembler;
    assembler.ingest({0, u"a"_s, u"first"_s, u"{\"q\":"_s});
    assembler.ingest({0, u""_s, u""_s, u"\"x\""_s});
    assembler.ingest({0, u"b"_s, u"second"_s, u"}"_s});
    EXPECT_EQ(assembler.finished(), (QList<ToolCall>{{u"b"_s, u"second"_s, u"{\"q\":\"x\"}"_s}}));
}

TEST(ToolCallAssembler, theOrderOfTheIndexesCounts) {
    QList<ToolCallDelta> deltas{
        {2, u"c"_s, u"three"_s, u"3"_s}, {0, u"a"_s, u"one"_s, u"1"_s}, {-1, u"z"_s, u"zero"_s, u"0"_s}};
    const QList<ToolCall> expected{
        {u"z"_s, u"zero"_s, u"0"_s}, {u"a"_s, u"one"_s, u"1"_s}, {u"c"_s, u"three"_s, u"3"_s}};
    for (int order = 0; order < 6; ++order) {
        ToolCallAssembler assembler;
        for (const ToolCallDelta &delta : deltas)
            assembler.ingest(delta);
        EXPECT_EQ(assembler.finished(), expected);
        std::next_permutation(deltas.begin(), deltas.end(),
                              [](const auto &a, const auto &b) { return a.index < b.index; });
    }
}

TEST(ToolCallAssembler, aCallWithoutAnIdIsNamedAfterItsIndex) {
    ToolCallAssembler assembler;
    assembler.ingest({4, {}, u"f"_s, u"{}"_s});
    EXPECT_EQ(assembler.finished(), (QList<ToolCall>{{u"call_4"_s, u"f"_s, u"{}"_s}}));
}

TEST(ToolCallAssembler, twoCallsWithoutAnIndexMerge) {
    ToolCallAssembler assembler;
    for (
        const ToolCallDelta &delta :
        parsed(
            toolLine(
                R"([{"id":"a","function":{"name":"f","arguments":"1"}},{"id":"b","function":{"name":"g","arguments":"2"}}])"))
            .toolDeltas)
        assembler.ingest(delta);
    EXPECT_EQ(assembler.finished(), (QList<ToolCall>{{u"b"_s, u"g"_s, u"12"_s}}));
}

TEST(ToolCallAssembler, aCallWithoutANameIsKept) {
    ToolCallAssembler assembler;
    assembler.ingest({0, u"a"_s, {}, {}});
    EXPECT_EQ(assembler.finished(), (QList<ToolCall>{{u"a"_s, QString(), QString()}}));
}
