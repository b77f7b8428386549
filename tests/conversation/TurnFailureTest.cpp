#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

using TurnFailure = TurnFixture;

namespace {
const QString failed = u"Ostrelin couldn't complete that reply."_s;
}

TEST_F(TurnFailure, withoutAnEngineTheReplySaysSo) {
    host.url.reset();
    say(u"Hi"_s);
    EXPECT_EQ(last().role, Role::assistant);
    EXPECT_EQ(last().content, u"Ostrelin isn't ready yet."_s);
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(TurnFailure, withoutAHostTheReplySaysSo) {
    auto gone = std::make_unique<FakeHost>();
    gone->url = engine.url();
    ChatController orphan(gone.get(), clock);
    gone.reset();
    orphan.send(u"Hi"_s);
    EXPECT_TRUE(eventually([&] { return !orphan.isGenerating(); }));
    EXPECT_EQ(orphan.conversation()->messages.last().content, u"Ostrelin isn't ready yet."_s);
}

TEST_F(TurnFailure, withoutATierTheTurnEndsWithoutAWord) {
    host.tier.reset();
    say(u"Hi"_s);
    ASSERT_EQ(messages().size(), 1);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_TRUE(engine.requests().isEmpty());
}

TEST_F(TurnFailure, withoutATierTheHistoryIsFittedToTheUsualContext) {
    host.tier->contextLength = 100'000;
    engine.answer(Script::reply({u"a"_s}));
    say(QString(15'000, u'x'));
    host.tier.reset();
    say(QString(15'000, u'y'));
    // Each question takes 4,294 tokens, and the usual context has 6,144 for them.
    EXPECT_EQ(chat->conversation()->droppedCount, 1);
}

TEST_F(TurnFailure, aServiceThatFailsDoesNotLeaveTheChatBusy) {
    TurnPoints points;
    points.makeTitle = [](const LLMClient &, const Sampling &, const Conversation &, std::stop_token) {
        const auto fail = []() -> Task<std::optional<QString>> {
            throw std::runtime_error("no title");
            co_return std::nullopt;
        };
        return fail();
    };
    makeChat(points);
    engine.answer(Script::reply({u"Hello."_s}));
    say(u"Hi"_s);
    EXPECT_EQ(last().content, u"Hello."_s);
    EXPECT_EQ(saved(), *chat->conversation());
    say(u"Again"_s);
    EXPECT_EQ(messages().size(), 4);
}

TEST_F(TurnFailure, aRefusalIsAFailedReplyInTheChatsOwnWords) {
    for (const int status : {401, 400, 500}) {
        engine.answer(Script(status).raw("{\"error\":{\"message\":\"inner\"}}"));
        engine.answer(Script(status));
        say(u"Hi"_s);
        EXPECT_EQ(last().content, failed) << status;
    }
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(TurnFailure, anEngineThatIsGoneIsAFailedReply) {
    host.url = QUrl(u"http://127.0.0.1:9"_s);
    say(u"Hi"_s);
    EXPECT_EQ(last().content, failed);
    EXPECT_FALSE(chat->streamingID());
}

TEST_F(TurnFailure, textThatHasArrivedIsKeptWithNoWordOfTheFailure) {
    engine.answer(Script().content(u"half"_s).pause(20).drop());
    say(u"Hi"_s);
    EXPECT_EQ(last().content, u"half"_s);
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(TurnFailure, fragmentsOfToolCallsAreDropped) {
    engine.answer(
        Script()
            .call({{u"index"_s, 0}, {u"id"_s, u"c"_s}, {u"function"_s, QJsonObject{{u"name"_s, u"f"_s}}}})
            .pause(20)
            .drop());
    say(u"Hi"_s);
    EXPECT_EQ(last().content, failed);
    EXPECT_FALSE(last().toolCalls);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(TurnFailure, textIsNotRecoveredAndNoServiceIsCalledAfterAFailure) {
    int calls = 0;
    TurnPoints points;
    points.extractThinking = [&](const QString &text) {
        ++calls;
        return ExtractedThinking{text, {}};
    };
    points.finishPage = [&](Conversation &, bool, const QDateTime &) {
        ++calls;
        return std::nullopt;
    };
    points.suggestsSearch = [&](const Settings &, const Conversation &) { return ++calls > 0; };
    points.makeTitle = [&](LLMClient, Sampling, Conversation,
                           std::stop_token) -> Task<std::optional<QString>> {
        ++calls;
        co_return std::nullopt;
    };
    makeChat(points);
    engine.answer(Script().content(u"<think>hm</think>half"_s).pause(20).drop());
    say(u"Hi"_s);
    EXPECT_EQ(last().content, u"<think>hm</think>half"_s);
    EXPECT_EQ(calls, 0);
}

TEST_F(TurnFailure, theNextTurnWorksAgain) {
    engine.answer(Script(500));
    engine.answer(Script::reply({u"Fine."_s}));
    say(u"Hi"_s);
    say(u"Again"_s);
    EXPECT_EQ(last().content, u"Fine."_s);
    EXPECT_EQ(messages().size(), 4);
}

TEST_F(TurnFailure, aReplyCutOffByItsLengthIsKept) {
    engine.answer(Script().content(u"long"_s).finish(u"length"_s).done());
    say(u"Hi"_s);
    EXPECT_EQ(last().content, u"long"_s);
    EXPECT_EQ(engine.requests().size(), 1);
}
