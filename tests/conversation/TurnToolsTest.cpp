#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

using TurnTools = TurnFixture;

namespace {

TurnPoints withTools(QStringList *ran) {
    TurnPoints points;
    points.toolList = [](bool allowTools, auto...) {
        return allowTools ? QJsonArray{QJsonObject{{u"type"_s, u"function"_s}}} : QJsonArray();
    };
    points.runTool = [ran](const ToolCall &call, TurnPoints::ToolContext, std::stop_token) {
        ran->append(call.name);
        const auto answer = [](QString text) -> Task<QString> { co_return text; };
        return answer(u"result of "_s + call.name);
    };
    return points;
}

} // namespace

TEST_F(TurnTools, aCallNobodyKnowsGetsUnknownTool) {
    engine.answer(Script::toolCall(u"c1"_s, u"web_search"_s, u"{\"query\":\"x\"}"_s));
    engine.answer(Script::reply({u"Sorry."_s}));
    say(u"Search."_s);
    ASSERT_EQ(messages().size(), 4);
    EXPECT_EQ(messages().at(1).toolCalls,
              (QList<ToolCall>{{u"c1"_s, u"web_search"_s, u"{\"query\":\"x\"}"_s}}));
    EXPECT_EQ(messages().at(2).role, Role::tool);
    EXPECT_EQ(messages().at(2).content, u"Unknown tool."_s);
    EXPECT_EQ(messages().at(2).toolCallId, u"c1"_s);
    EXPECT_EQ(last().content, u"Sorry."_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(body(1)["messages"_L1].toArray().size(), 4);
}

TEST_F(TurnTools, completeCallsMakeAToolRoundWhateverTheServerSaysOfTheEnd) {
    engine.answer(Script()
                      .call({{u"index"_s, 0},
                             {u"id"_s, u"c"_s},
                             {u"function"_s, QJsonObject{{u"name"_s, u"f"_s}, {u"arguments"_s, u"{}"_s}}}})
                      .finish(u"stop"_s)
                      .done());
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    EXPECT_EQ(messages().size(), 4);
}

TEST_F(TurnTools, anEndForToolCallsWithoutAUsableOneIsAnOrdinaryEnd) {
    engine.answer(Script()
                      .content(u"text"_s)
                      .call({{u"index"_s, 0}, {u"id"_s, u"c"_s}})
                      .finish(u"tool_calls"_s)
                      .done());
    say(u"Go"_s);
    EXPECT_EQ(messages().size(), 2);
    EXPECT_FALSE(last().toolCalls);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(TurnTools, fragmentsMayComeInAnyOrder) {
    const auto fragment = [](int index, const QJsonObject &function, const QString &id = {}) {
        QJsonObject object{{u"index"_s, index}, {u"function"_s, function}};
        if (!id.isEmpty())
            object[u"id"_s] = id;
        return object;
    };
    engine.answer(Script()
                      .call(fragment(1, {{u"arguments"_s, u"{\"b\""_s}}))
                      .call(fragment(0, {{u"name"_s, u"one"_s}, {u"arguments"_s, u"{}"_s}}))
                      .call(fragment(1, {{u"name"_s, u"two"_s}, {u"arguments"_s, u":2}"_s}}, u"second"_s))
                      .finish(u"tool_calls"_s)
                      .done());
    engine.answer(Script::reply({u"ok"_s}));
    QStringList ran;
    makeChat(withTools(&ran));
    say(u"Go"_s);
    EXPECT_EQ(ran, (QStringList{u"one"_s, u"two"_s}));
    EXPECT_EQ(messages().at(1).toolCalls,
              (QList<ToolCall>{{u"call_0"_s, u"one"_s, u"{}"_s}, {u"second"_s, u"two"_s, u"{\"b\":2}"_s}}));
    EXPECT_EQ(messages().at(2).toolCallId, u"call_0"_s);
    EXPECT_EQ(messages().at(3).content, u"result of two"_s);
}

TEST_F(TurnTools, afterFourBatchesTheNextRequestHasNoTools) {
    host.fakeSettings.searchMode = SearchMode::always;
    QStringList ran;
    makeChat(withTools(&ran));
    for (int batch = 0; batch < 4; ++batch)
        engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    engine.answer(Script::reply({u"That is all."_s}));
    say(u"Go"_s);
    ASSERT_EQ(engine.requests().size(), 5);
    EXPECT_EQ(ran.size(), 4);
    EXPECT_EQ(last().content, u"That is all."_s);
    for (int request = 0; request < 4; ++request) {
        EXPECT_TRUE(body(request).contains("tools"_L1)) << request;
        EXPECT_TRUE(prompt(request).contains(u"You can use the web_search tool"_s)) << request;
    }
    EXPECT_FALSE(body(4).contains("tools"_L1));
    EXPECT_TRUE(prompt(4).contains(u"You cannot access the internet."_s));
}

TEST_F(TurnTools, onlyTheFirstRequestThinks) {
    QStringList ran;
    makeChat(withTools(&ran));
    engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s, Thinking::on);
    const auto thinks = [this](int request) {
        return body(request)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1].toBool();
    };
    EXPECT_TRUE(thinks(0));
    EXPECT_FALSE(thinks(1));
    EXPECT_EQ(body(1)["temperature"_L1].toDouble(), 0.7);
}

TEST_F(TurnTools, aBatchIsOnDiskWhenItIsDone) {
    engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    engine.answer(Script().hold());
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    EXPECT_EQ(saved().messages.size(), 3);
    EXPECT_TRUE(chat->isGenerating());
    chat->stop();
}

TEST_F(TurnTools, aStopWhileAToolWaitsSendsNoFurtherRequest) {
    TurnPoints points;
    points.runTool = [](const ToolCall &, TurnPoints::ToolContext, std::stop_token stop) {
        const auto wait = [](std::stop_token token) -> Task<QString> {
            WaitPoint answer;
            const std::stop_callback refuse(token, [&answer] { answer.wake(); });
            co_await answer.wait();
            co_return u"The user declined."_s;
        };
        return wait(stop);
    };
    makeChat(points);
    engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return messages().size() == 2 && messages().last().toolCalls; }));
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_FALSE(chat->streamingID());
    chat->stop();
    EXPECT_TRUE(eventually([&] { return saved().messages.size() == 3; }));
    EXPECT_EQ(saved().messages.last().content, u"The user declined."_s);
    letPass(50);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(TurnTools, aCallThatWasStoppedInTheMiddleDoesNotSpoilTheChat) {
    engine.answer(Script()
                      .call({{u"index"_s, 0},
                             {u"id"_s, u"c"_s},
                             {u"function"_s,
                              QJsonObject{{u"name"_s, u"f"_s}, {u"arguments"_s, u"{\"query\": \"ok"_s}}}})
                      .hold());
    engine.answer(Script::reply({u"Fine."_s}));
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 1; }));
    letPass(50);
    chat->stop();
    ASSERT_TRUE(
        eventually([&] { return saved().messages.size() == 2 && saved().messages.last().toolCalls; }));
    EXPECT_EQ(saved().messages.last().toolCalls->first().arguments, u"{\"query\": \"ok"_s);
    say(u"Again"_s);
    const QJsonObject call =
        body(1)["messages"_L1].toArray().at(2).toObject()["tool_calls"_L1].toArray().at(0).toObject();
    EXPECT_EQ(call["function"_L1].toObject()["arguments"_L1].toString(), u"{}"_s);
}

TEST_F(TurnTools, aStopBetweenTwoCallsEndsTheTurnWithoutASave) {
    TurnPoints points;
    points.runTool = [this](const ToolCall &, TurnPoints::ToolContext, std::stop_token) {
        chat->stop();
        const auto answer = []() -> Task<QString> { co_return u"done"_s; };
        return answer();
    };
    makeChat(points);
    const auto call = [](int index) {
        return QJsonObject{{u"index"_s, index}, {u"function"_s, QJsonObject{{u"name"_s, u"f"_s}}}};
    };
    engine.answer(Script().call(call(0)).call(call(1)).finish(u"tool_calls"_s).done());
    say(u"Go"_s);
    EXPECT_EQ(saved().messages.size(), 1);
    EXPECT_FALSE(chat->generatingID());
}

TEST_F(TurnTools, aToolMayChangeTheChat) {
    TurnPoints points;
    points.runTool = [](const ToolCall &, const TurnPoints::ToolContext &context, std::stop_token) {
        context.conversation.messages.last().searchEvent = SearchEvent{u"q"_s, SearchStatus::denied, {}};
        const auto answer = []() -> Task<QString> { co_return u"no"_s; };
        return answer();
    };
    makeChat(points);
    engine.answer(Script::toolCall(u"c"_s, u"f"_s, u"{}"_s));
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    EXPECT_EQ(messages().at(1).searchEvent->status, SearchStatus::denied);
    EXPECT_EQ(saved(), *chat->conversation());
}
