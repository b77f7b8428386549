#include "client/PacedStream.h"

#include "client/OstrelinError.h"
#include "support/Await.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Replies of a scripted server, in bursts of three.
class PacedStreamTest : public ::testing::Test {
protected:
    PacedStreamTest() {
        request.messages = {QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"Hi"_s}}};
        request.tools = {QJsonObject{{u"type"_s, u"function"_s}}};
        request.sampling.temperature = 0.25;
        request.maxTokens = 4096;
    }

    std::unique_ptr<PacedStream> open() {
        return std::make_unique<PacedStream>(LLMClient{engine.url(), u"key"_s}, request, pace, clock);
    }

    /// The chunks up to the end.
    QList<StreamChunk> readAll() {
        QList<StreamChunk> chunks;
        const auto stream = open();
        while (const auto chunk = await(stream->next({})))
            chunks.append(*chunk);
        return chunks;
    }

    static QList<StreamChunk> texts(const QStringList &pieces, const QString &finishReason) {
        QList<StreamChunk> chunks;
        for (const QString &piece : pieces)
            chunks.append({.content = piece});
        chunks.append({.finishReason = finishReason});
        return chunks;
    }

    /// A piece of a reply whose budget then is used up.
    static Script burst(const QStringList &pieces) {
        Script script;
        for (const QString &piece : pieces)
            script.content(piece);
        return script.finish(u"length"_s).done();
    }

    QJsonObject body(qsizetype index) const { return engine.requests().at(index).json(); }
    QJsonObject lastMessage(qsizetype index) const {
        return body(index)["messages"_L1].toArray().last().toObject();
    }

    ScriptedEngine engine;
    ManualClock clock{ManualClock::Sleep::skipped};
    StreamRequest request;
    Pace pace{.burstTokens = 3, .rest = 2s};
};

} // namespace

TEST(Pace, isThatOfTheSpeed) {
    EXPECT_FALSE(paceOf(ResponseSpeed::full));
    EXPECT_EQ(paceOf(ResponseSpeed::calm)->burstTokens, 16);
    EXPECT_EQ(paceOf(ResponseSpeed::calm)->rest, 1s);
    EXPECT_EQ(paceOf(ResponseSpeed::slowYourRoll)->burstTokens, 6);
    EXPECT_EQ(paceOf(ResponseSpeed::slowYourRoll)->rest, 5s);
}

TEST_F(PacedStreamTest, aReplyShorterThanABurstIsOneRequest) {
    engine.answer(Script::reply({u"Hel"_s, u"lo"_s}));
    EXPECT_EQ(readAll(), texts({u"Hel"_s, u"lo"_s}, u"stop"_s));
    ASSERT_EQ(engine.requests().size(), 1);
    EXPECT_EQ(body(0)["max_tokens"_L1], 4096);
    EXPECT_FALSE(body(0).contains("continue_final_message"_L1));
    EXPECT_EQ(clock.elapsed(), 0ms);
}

TEST_F(PacedStreamTest, theReplyGoesOnAfterARestWhereItStopped) {
    engine.answer(Script::reply({u"a"_s, u"b"_s, u"c"_s, u"never read"_s}));
    engine.answer(burst({u"d"_s, u"e"_s, u"f"_s}));
    engine.answer(Script::reply({u"g"_s}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s}, u"stop"_s));
    EXPECT_EQ(clock.elapsed(), 4s);
    ASSERT_EQ(engine.requests().size(), 3);
    for (const qsizetype index : {1, 2}) {
        EXPECT_EQ(body(index)["messages"_L1].toArray().size(), 2) << "one half-written message, not several";
        EXPECT_EQ(body(index)["continue_final_message"_L1], true);
        EXPECT_EQ(body(index)["add_generation_prompt"_L1], false);
        EXPECT_EQ(body(index)["max_tokens"_L1], 3);
        EXPECT_EQ(body(index)["tools"_L1], body(0)["tools"_L1]);
        EXPECT_EQ(body(index)["temperature"_L1], 0.25);
    }
    EXPECT_EQ(lastMessage(1), (QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, u"abc"_s}}));
    EXPECT_EQ(lastMessage(2), (QJsonObject{{u"role"_s, u"assistant"_s}, {u"content"_s, u"abcdef"_s}}));
}

TEST_F(PacedStreamTest, theServerIsAtRestFromTheLastPieceOfABurstOn) {
    engine.answer(Script().content(u"a"_s).content(u"b"_s).content(u"c"_s).hold());
    const auto stream = open();
    for (const QString &piece : {u"a"_s, u"b"_s, u"c"_s})
        EXPECT_EQ(await(stream->next({}))->content, piece);
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; })) << "with nobody asking for more";
}

TEST_F(PacedStreamTest, aRestLastsItsTime) {
    ManualClock still;
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(Script::reply({u"d"_s}));
    PacedStream stream(LLMClient{engine.url(), {}}, request, pace, still);
    for (int count = 0; count < 3; ++count)
        await(stream.next({}));
    auto next = stream.next({});
    still.advance(1999ms);
    letPass(20);
    EXPECT_EQ(engine.requests().size(), 1);
    still.advance(1ms);
    EXPECT_EQ(await(std::move(next))->content, u"d"_s);
}

TEST_F(PacedStreamTest, aReplyThatEndsWithItsBurstTakesOneMoreRequest) {
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(Script().finish(u"stop"_s).done());
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s}, u"stop"_s));
    EXPECT_EQ(engine.requests().size(), 2);
}

TEST_F(PacedStreamTest, aContinuationWithoutTextIsTheEndWhateverItsReason) {
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(burst({}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s}, u"stop"_s));
}

TEST_F(PacedStreamTest, aReplyWithoutTextIsTheEnd) {
    engine.answer(burst({}));
    EXPECT_EQ(readAll(), texts({}, u"stop"_s));
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(PacedStreamTest, aConnectionThatEndsInMidBurstIsContinued) {
    engine.answer(Script().content(u"a"_s));
    engine.answer(Script::reply({u"b"_s}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s}, u"stop"_s));
}

TEST_F(PacedStreamTest, thinkingNeverRestsAndUsesTheBudget) {
    request.thinking = Thinking::on;
    Script first;
    for (int count = 0; count < 1000; ++count)
        first.reasoning(u"m"_s);
    engine.answer(first.content(u"a"_s).content(u"b"_s).content(u"c"_s).hold());
    engine.answer(Script::reply({u"d"_s}));
    const QList<StreamChunk> chunks = readAll();
    EXPECT_EQ(chunks.size(), 1005);
    EXPECT_EQ(clock.elapsed(), 2s);
    EXPECT_EQ(lastMessage(1), (QJsonObject{{u"role"_s, u"assistant"_s},
                                           {u"content"_s, u"abc"_s},
                                           {u"reasoning_content"_s, QString(1000, u'm')}}));
    EXPECT_EQ(body(1)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1], true);
}

TEST_F(PacedStreamTest, withThinkingOffNoThoughtsAreSentBack) {
    engine.answer(Script().reasoning(u"m"_s).content(u"a"_s).content(u"b"_s).content(u"c"_s));
    engine.answer(Script::reply({u"d"_s}));
    readAll();
    EXPECT_FALSE(lastMessage(1).contains("reasoning_content"_L1));
}

TEST_F(PacedStreamTest, thinkingAloneIsTheEnd) {
    engine.answer(Script().reasoning(u"m"_s).finish(u"length"_s).done());
    EXPECT_EQ(readAll(), (QList<StreamChunk>{{.reasoning = u"m"_s}, {.finishReason = u"stop"_s}}));
}

TEST_F(PacedStreamTest, aToolCallIsNotCutInHalf) {
    Script script = Script().content(u"a"_s);
    for (int count = 0; count < 10; ++count)
        script.call({{u"index"_s, 0}, {u"function"_s, QJsonObject{{u"arguments"_s, u"x"_s}}}});
    engine.answer(script.finish(u"tool_calls"_s).done());
    const QList<StreamChunk> chunks = readAll();
    ASSERT_EQ(chunks.size(), 12);
    EXPECT_EQ(chunks.at(5).toolDeltas.size(), 1);
    EXPECT_EQ(chunks.last(), (StreamChunk{.finishReason = u"tool_calls"_s}));
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(PacedStreamTest, aServerThatBeginsAgainEndsTheReply) {
    for (const QString &first : {u"a"_s, u"ab"_s, u"abc"_s}) {
        const qsizetype before = engine.requests().size();
        engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
        engine.answer(Script::reply({first, u"b"_s, u"c"_s}));
        EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s}, u"stop"_s));
        EXPECT_EQ(engine.requests().size(), before + 2);
    }
}

TEST_F(PacedStreamTest, aBeginningAgainMayFollowAnEmptyPieceOrAThought) {
    request.thinking = Thinking::on;
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(Script().content(u""_s).reasoning(u"m"_s).content(u"ab"_s).content(u"never read"_s));
    QList<StreamChunk> expected = texts({u"a"_s, u"b"_s, u"c"_s}, u"stop"_s);
    expected.insert(3, {.reasoning = u"m"_s});
    EXPECT_EQ(readAll(), expected);
}

TEST_F(PacedStreamTest, onlyTheFirstPieceOfAContinuationCanBeABeginning) {
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(Script::reply({u"abcd"_s, u"a"_s}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s, u"abcd"_s, u"a"_s}, u"stop"_s));
}

TEST_F(PacedStreamTest, theFirstRequestIsNeverABeginningAgain) {
    engine.answer(Script::reply({u"a"_s, u"a"_s}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"a"_s}, u"stop"_s));
}

TEST_F(PacedStreamTest, aBudgetThatIsUsedUpIsTheLength) {
    request.maxTokens = 5;
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(burst({u"d"_s, u"e"_s}));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}, u"length"_s));
    EXPECT_EQ(body(1)["max_tokens"_L1], 2);
}

TEST_F(PacedStreamTest, everyChunkUsesTheBudgetAlsoAnEmptyOne) {
    request.maxTokens = 6;
    engine.answer(Script().content(u""_s).content(u""_s).content(u"a"_s).content(u"b"_s).content(u"c"_s));
    engine.answer(Script().content(u""_s).content(u"d"_s));
    EXPECT_EQ(readAll(), texts({u"a"_s, u"b"_s, u"c"_s, u"d"_s}, u"length"_s));
    EXPECT_EQ(body(1)["max_tokens"_L1], 1);
}

TEST_F(PacedStreamTest, thoughtsUseTheBudget) {
    request.maxTokens = 7;
    engine.answer(
        Script().reasoning(u"m"_s).reasoning(u"m"_s).content(u"a"_s).content(u"b"_s).content(u"c"_s));
    engine.answer(Script().content(u"d"_s).content(u"e"_s));
    EXPECT_EQ(readAll().last(), (StreamChunk{.finishReason = u"length"_s}));
    EXPECT_EQ(body(1)["max_tokens"_L1], 2);
}

TEST_F(PacedStreamTest, piecesOfToolCallsUseTheBudget) {
    request.maxTokens = 4;
    const QJsonObject piece{{u"index"_s, 0}, {u"function"_s, QJsonObject{{u"arguments"_s, u"x"_s}}}};
    engine.answer(Script().content(u"a"_s).call(piece).call(piece));
    engine.answer(Script().content(u"b"_s));
    EXPECT_EQ(readAll().last(), (StreamChunk{.finishReason = u"length"_s}));
    EXPECT_EQ(body(1)["max_tokens"_L1], 1);
}

TEST_F(PacedStreamTest, whatClosesAReplyUsesTheBudgetToo) {
    request.maxTokens = 5;
    // Two pieces, the piece with the reason, and the closing line.
    engine.answer(burst({u"a"_s, u"b"_s}));
    engine.answer(Script().content(u"d"_s));
    EXPECT_EQ(readAll().last(), (StreamChunk{.finishReason = u"length"_s}));
    EXPECT_EQ(body(1)["max_tokens"_L1], 1);
}

TEST_F(PacedStreamTest, aFailureIsThrownAndNothingIsAskedAgain) {
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    engine.answer(Script(500));
    const auto stream = open();
    for (int count = 0; count < 3; ++count)
        await(stream->next({}));
    EXPECT_THROW(await(stream->next({})), OstrelinError);
    EXPECT_FALSE(await(stream->next({}))) << "it has ended";
    EXPECT_EQ(engine.requests().size(), 2);
}

TEST_F(PacedStreamTest, aStopInMidBurstEndsItAtOnce) {
    engine.answer(Script().content(u"a"_s).hold());
    const auto stream = open();
    std::stop_source stop;
    EXPECT_EQ(await(stream->next(stop.get_token()))->content, u"a"_s);
    auto next = stream->next(stop.get_token());
    stop.request_stop();
    EXPECT_FALSE(await(std::move(next)));
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
    EXPECT_FALSE(await(stream->next({}))) << "it has ended";
}

TEST_F(PacedStreamTest, aStopDuringARestEndsItAtOnce) {
    ManualClock still;
    engine.answer(burst({u"a"_s, u"b"_s, u"c"_s}));
    PacedStream stream(LLMClient{engine.url(), {}}, request, pace, still);
    std::stop_source stop;
    for (int count = 0; count < 3; ++count)
        await(stream.next(stop.get_token()));
    auto next = stream.next(stop.get_token());
    stop.request_stop();
    EXPECT_FALSE(await(std::move(next)));
    still.advance(1h);
    letPass(20);
    EXPECT_EQ(engine.requests().size(), 1);
    EXPECT_FALSE(await(stream.next({})));
}
