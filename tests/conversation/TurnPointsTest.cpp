#include "conversation/Turn.h"
#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

using TurnPointsTest = TurnFixture;

namespace {

/// Takes what stands between <t> and </t>.
ExtractedThinking fakeThinking(const QString &text) {
    const qsizetype end = text.indexOf(u"</t>"_s);
    if (end < 0)
        return {text, {}};
    return {text.sliced(end + 4), text.sliced(3, end - 3)};
}

ExtractedToolCalls fakeCalls(const QString &text) {
    if (!text.contains(u"<call>"_s))
        return {text, {}};
    return {QString(text).remove(u"<call>"_s), {{u"written"_s, u"f"_s, u"{}"_s}}};
}

} // namespace

TEST_F(TurnPointsTest, thinkingInTheTextIsJoinedToTheStreamedOne) {
    TurnPoints points;
    points.extractThinking = fakeThinking;
    makeChat(points);
    engine.answer(Script().reasoning(u"first"_s).content(u"<t>second</t>Hi"_s).done());
    say(u"Go"_s);
    EXPECT_EQ(last().reasoning, u"first\n\nsecond"_s);
    EXPECT_EQ(last().content, u"Hi"_s);
}

TEST_F(TurnPointsTest, thinkingInTheTextAloneIsTheReasoning) {
    TurnPoints points;
    points.extractThinking = fakeThinking;
    makeChat(points);
    engine.answer(Script::reply({u"<t>only</t>Hi"_s}));
    engine.answer(Script::reply({u"<t></t>Hi"_s}));
    say(u"Go"_s);
    EXPECT_EQ(last().reasoning, u"only"_s);
    say(u"Go"_s);
    EXPECT_FALSE(last().reasoning);
}

TEST_F(TurnPointsTest, aCallInTheTextMakesAToolRoundWhateverTheServerSays) {
    TurnPoints points;
    points.extractToolCalls = fakeCalls;
    makeChat(points);
    engine.answer(Script::reply({u"<call>"_s}));
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    ASSERT_EQ(messages().size(), 4);
    EXPECT_EQ(messages().at(1).content, QString());
    EXPECT_EQ(messages().at(1).toolCalls->first().id, u"written"_s);
}

TEST_F(TurnPointsTest, streamedCallsBeatThoseInTheText) {
    TurnPoints points;
    points.extractToolCalls = fakeCalls;
    makeChat(points);
    engine.answer(
        Script()
            .content(u"so <call>"_s)
            .call({{u"index"_s, 0}, {u"id"_s, u"c"_s}, {u"function"_s, QJsonObject{{u"name"_s, u"g"_s}}}})
            .done());
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    EXPECT_EQ(messages().at(1).toolCalls, (QList<ToolCall>{{u"c"_s, u"g"_s, QString()}}));
    EXPECT_EQ(messages().at(1).content, u"so "_s);
}

TEST_F(TurnPointsTest, aPacedStreamServesOnlyTheFirstRequestOfATurn) {
    int paced = 0;
    TurnPoints points;
    points.pacedStream = [&](const LLMClient &client, const StreamRequest &request, ResponseSpeed speed) {
        ++paced;
        EXPECT_EQ(speed, ResponseSpeed::calm);
        EXPECT_EQ(request.maxTokens, 4096);
        return client.stream(request);
    };
    makeChat(points);
    host.fakeSettings.responseSpeed = ResponseSpeed::calm;
    engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    EXPECT_EQ(engine.requests().size(), 2);
    EXPECT_EQ(paced, 1);
    host.fakeSettings.responseSpeed = ResponseSpeed::full;
    say(u"Go"_s);
    EXPECT_EQ(paced, 1);
}

TEST_F(TurnPointsTest, theEndOfATurnFinishesSavesHintsAndTitlesInThisOrder) {
    QStringList order;
    TurnPoints points;
    points.finishPage = [&](Conversation &conversation, bool accepted, const QDateTime &) {
        order.append(accepted ? u"page accepted"_s : u"page"_s);
        conversation.messages.last().content = u"visible"_s;
        return std::nullopt;
    };
    points.suggestsSearch = [&](const Settings &, const Conversation &conversation) {
        order.append(u"hint"_s);
        EXPECT_EQ(ChatStore().load(conversation.id)->messages.last().content, u"visible"_s);
        return false;
    };
    points.makeTitle = [&](const LLMClient &, const Sampling &, const Conversation &, std::stop_token) {
        order.append(u"title"_s);
        EXPECT_TRUE(chat->isGenerating());
        const auto nothing = []() -> Task<std::optional<QString>> { co_return std::nullopt; };
        return nothing();
    };
    makeChat(points);
    engine.answer(Script::reply({u"raw"_s}));
    say(u"Go"_s);
    EXPECT_EQ(order, (QStringList{u"page"_s, u"hint"_s, u"title"_s}));
    EXPECT_EQ(last().content, u"visible"_s);
}

TEST_F(TurnPointsTest, theTurnGoesOnUntilTheTitleHasCome) {
    WaitPoint title;
    TurnPoints points;
    points.makeTitle = [&](const LLMClient &, const Sampling &, const Conversation &, std::stop_token) {
        const auto wait = [](WaitPoint *point) -> Task<std::optional<QString>> {
            co_await point->wait();
            co_return u"Garden"_s;
        };
        return wait(&title);
    };
    makeChat(points);
    engine.answer(Script::reply({u"raw"_s}));
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    letPass(30);
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_FALSE(chat->streamingID());
    title.wake();
    EXPECT_TRUE(waitForTurn());
    EXPECT_EQ(chat->conversation()->title, u"Garden"_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(chat->summaries().first().title, u"Garden"_s);
}

TEST_F(TurnPointsTest, aStopWhileTheTitleIsAwaitedEndsTheTurn) {
    TurnPoints points;
    points.makeTitle = [](const LLMClient &, const Sampling &, const Conversation &, std::stop_token stop) {
        const auto wait = [](std::stop_token token) -> Task<std::optional<QString>> {
            WaitPoint end;
            const std::stop_callback wake(token, [&end] { end.wake(); });
            co_await end.wait();
            co_return u"Too late"_s;
        };
        return wait(stop);
    };
    makeChat(points);
    engine.answer(Script::reply({u"raw"_s}));
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    chat->stop();
    EXPECT_FALSE(chat->isGenerating());
    letPass(30);
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_EQ(saved().messages.last().content, u"raw"_s);
    EXPECT_EQ(saved().title, u"New chat"_s);
}

TEST_F(TurnPointsTest, aPageRetryWithoutAToolRoundIsPacedLikeTheFirstRequest) {
    int paced = 0;
    TurnPoints points;
    points.pacedStream = [&](const LLMClient &client, const StreamRequest &request, ResponseSpeed) {
        ++paced;
        return client.stream(request);
    };
    points.pageCorrection = [](const QString &text) {
        return text == u"good"_s ? std::nullopt : std::optional(u"Again."_s);
    };
    makeChat(points);
    host.fakeSettings.responseSpeed = ResponseSpeed::calm;
    engine.answer(Script::reply({u"bad"_s}));
    engine.answer(Script::reply({u"good"_s}));
    chat->newChat();
    await(generate(chat.get(), *chat->conversation(),
                   {.question = UserMessage{u"Page"_s, {}}, .pageAccepted = true}, {}));
    EXPECT_EQ(engine.requests().size(), 2);
    EXPECT_EQ(paced, 2);
}

TEST_F(TurnPointsTest, aPageThatCannotBeMadeIsAskedForOnceMore) {
    host.fakeSettings.searchMode = SearchMode::always;
    bool acceptedAtTheEnd = false;
    TurnPoints points;
    points.toolList = [](bool allowTools, auto...) {
        return allowTools ? QJsonArray{QJsonObject{}} : QJsonArray();
    };
    points.runTool = [](const ToolCall &, const TurnPoints::ToolContext &context, std::stop_token) {
        context.pageOfferAccepted = true;
        const auto answer = []() -> Task<QString> { co_return u"Yes."_s; };
        return answer();
    };
    points.pageCorrection = [](const QString &text) {
        return text == u"good"_s ? std::nullopt : std::optional(u"Build it again."_s);
    };
    points.finishPage = [&](Conversation &, bool accepted, const QDateTime &) {
        acceptedAtTheEnd = accepted;
        return std::nullopt;
    };
    makeChat(points);
    engine.answer(Script::toolCall(u"c"_s, u"offer_page"_s, u"{}"_s));
    engine.answer(Script::reply({u"bad"_s}));
    engine.answer(Script::reply({u"still bad"_s}));
    say(u"Page"_s);
    // The question, the call, its answer, and the second attempt: the first one is gone, and there's no
    // third.
    ASSERT_EQ(messages().size(), 4);
    EXPECT_EQ(last().content, u"still bad"_s);
    ASSERT_EQ(engine.requests().size(), 3);
    EXPECT_FALSE(body(1).contains("tools"_L1));
    EXPECT_FALSE(body(2).contains("tools"_L1));
    EXPECT_FALSE(prompt(1).endsWith(u"Build it again."_s));
    EXPECT_TRUE(prompt(2).endsWith(u"\nBuild it again."_s));
    EXPECT_EQ(body(2)["messages"_L1].toArray().size(), 4);
    EXPECT_TRUE(acceptedAtTheEnd);
}

TEST_F(TurnPointsTest, aPageThatIsFineIsNotAskedForAgain) {
    TurnPoints points;
    points.pageCorrection = [](const QString &) { return std::optional(u"Again."_s); };
    makeChat(points);
    engine.answer(Script::reply({u"no page was agreed on"_s}));
    say(u"Hi"_s);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(TurnPointsTest, aTurnMayBeginWithThePageAgreedOn) {
    TurnPoints points;
    points.toolList = [](bool allowTools, auto...) {
        return allowTools ? QJsonArray{QJsonObject{}} : QJsonArray();
    };
    makeChat(points);
    chat->newChat();
    engine.answer(Script::reply({u"page"_s}));
    await(generate(chat.get(), *chat->conversation(),
                   {.question = UserMessage{u"Page"_s, {}}, .pageAccepted = true}, {}));
    EXPECT_FALSE(body(0).contains("tools"_L1));
}

TEST_F(TurnPointsTest, aTurnThatIsCancelledBeforeItBeginsOnlySavesTheQuestion) {
    chat->newChat();
    std::stop_source stop;
    stop.request_stop();
    await(generate(chat.get(), *chat->conversation(), {.question = UserMessage{u"Hi"_s, {}}},
                   stop.get_token()));
    EXPECT_TRUE(engine.requests().isEmpty());
    EXPECT_EQ(saved().messages.size(), 1);
    EXPECT_FALSE(chat->isGenerating());
}
