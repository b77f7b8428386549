#include "conversation/Tools.h"

#include "conversation/TurnFixture.h"
#include "conversation/TurnServices.h"
#include "support/EnvironmentVariable.h"

using namespace Qt::StringLiterals;

namespace {

const QString searchDeclined =
    u"The user declined the search. Answer from your own knowledge and say you couldn't check the web."_s;
const QString memoryDeclined = u"The user did not want that saved to memory."_s;

/// Whole turns in which the model calls tools.
class ToolsTest : public TurnFixture {
protected:
    ToolsTest() {
        host.fakeSettings.searchMode = SearchMode::always;
        host.tier->supportsTools = true;
        makeChat(services());
    }

    TurnPoints services() {
        TurnPoints points = turnServices(
            clock, {.search =
                        [this](const QString &query, std::stop_token stop) {
                            queries.append(query);
                            return search(result, holdsSearch, stop);
                        },
                    .fetchPage =
                        [this](const QString &url, const QSet<QString> &allowed, std::stop_token stop) {
                            fetched.append(url);
                            allowedURLs = allowed;
                            return fetch(holdsSearch, stop);
                        }});
        points.makeTitle = nullptr;
        return points;
    }

    static Task<SearchOutcome> search(SearchOutcome result, bool holds, std::stop_token stop) {
        if (holds)
            co_await untilStopped(stop);
        co_return result;
    }
    static Task<QString> fetch(bool holds, std::stop_token stop) {
        if (holds)
            co_await untilStopped(stop);
        co_return u"text of the page"_s;
    }
    static Task<> untilStopped(std::stop_token stop) {
        WaitPoint end;
        const std::stop_callback wake(stop, [&end] { end.wake(); });
        co_await end.wait();
        throw Cancelled();
    }

    /// The model calls a tool, and answers once it has its result.
    void call(const QString &name, const QString &arguments) {
        engine.answer(Script::toolCall(u"c1"_s, name, arguments));
        engine.answer(Script::reply({u"So."_s}));
        chat->send(u"Go"_s);
    }

    /// A reply with two calls of a tool, with these ids.
    static Script twoCalls(const QString &name, const QStringList &ids) {
        Script script;
        for (int index = 0; index < 2; ++index)
            script.call(
                {{u"index"_s, index},
                 {u"id"_s, ids.at(index)},
                 {u"function"_s,
                  QJsonObject{{u"name"_s, name},
                              {u"arguments"_s, u"{\"query\":\"q%1\",\"fact\":\"f%1\"}"_s.arg(index)}}}});
        return script.finish(u"tool_calls"_s).done();
    }

    /// What the model reads, when the turn is over.
    QString resultOf(const QString &name, const QString &arguments) {
        call(name, arguments);
        EXPECT_TRUE(waitForTurn());
        return messages().at(messages().size() - 2).content;
    }

    bool asks() {
        return eventually([this] {
            return chat->consent().pendingPermission() || chat->consent().pendingPageOffer() ||
                   chat->consent().pendingMemory();
        });
    }

    const Message &caller() const { return messages().at(messages().size() - 3); }

    SearchOutcome result{.text = u"[1] Tea\nhttps://Tea.example/a/\nGreen."_s,
                         .sources = {{1, u"Tea"_s, u"https://Tea.example/a/"_s, u"Green."_s}}};
    bool holdsSearch = false;
    QStringList queries;
    QStringList fetched;
    QSet<QString> allowedURLs;
};

} // namespace

TEST(StringArgument, isATextOfAnObject) {
    EXPECT_EQ(stringArgument(u"{\"query\":\"tea\",\"n\":1}"_s, u"query"_s), u"tea"_s);
    EXPECT_EQ(stringArgument(u" {\"query\":\"\"} "_s, u"query"_s), u""_s);
    for (const QString &text : {u""_s, u"tea"_s, u"{\"query\":"_s, u"[\"query\"]"_s, u"{\"query\":1}"_s,
                                u"{\"query\":null}"_s, u"{\"Query\":\"tea\"}"_s, u"\"query\""_s})
        EXPECT_FALSE(stringArgument(text, u"query"_s)) << text.toStdString();
}

TEST_F(ToolsTest, aSearchRunsAndIsShownWithItsSources) {
    EXPECT_EQ(resultOf(u"web_search"_s, u"{\"query\":\"green tea\"}"_s), result.text);
    EXPECT_EQ(queries, QStringList(u"green tea"_s));
    EXPECT_EQ(caller().searchEvent, (SearchEvent{u"green tea"_s, SearchStatus::allowed, result.sources}));
    EXPECT_EQ(saved(), *chat->conversation());
    const QJsonArray tools = body(0)["tools"_L1].toArray();
    EXPECT_EQ(tools.size(), 4);
}

TEST_F(ToolsTest, argumentsThatCannotBeReadSearchForNothing) {
    for (const QString &arguments : {u"{"_s, u"{\"query\":5}"_s}) {
        resultOf(u"web_search"_s, arguments);
        EXPECT_EQ(queries.takeLast(), QString());
    }
}

TEST_F(ToolsTest, aSearchThatIsAskedForWaitsForTheAnswer) {
    host.fakeSettings.searchMode = SearchMode::ask;
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(asks());
    EXPECT_EQ(chat->consent().pendingPermission()->query, u"tea"_s);
    EXPECT_EQ(chat->consent().pendingPermission()->messageID, messages().last().id);
    EXPECT_TRUE(chat->isGenerating());
    letPass(30);
    EXPECT_TRUE(queries.isEmpty());
    chat->consent().resolveSearch(PermissionChoice::allow);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(queries, QStringList(u"tea"_s));
    EXPECT_EQ(host.fakeSettings.searchMode, SearchMode::ask);
    EXPECT_EQ(caller().searchEvent->status, SearchStatus::allowed);
}

TEST_F(ToolsTest, alwaysIsRememberedAndTheNextSearchIsNotAskedFor) {
    host.fakeSettings.searchMode = SearchMode::ask;
    engine.answer(twoCalls(u"web_search"_s, {u"a"_s, u"b"_s}));
    engine.answer(Script::reply({u"So."_s}));
    chat->send(u"Go"_s);
    ASSERT_TRUE(asks());
    chat->consent().resolveSearch(PermissionChoice::always);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(queries, (QStringList{u"q0"_s, u"q1"_s}));
    EXPECT_EQ(host.fakeSettings.searchMode, SearchMode::always);
    EXPECT_EQ(messages().at(1).searchEvent->query, u"q1"_s) << "a message shows its last search";
}

TEST_F(ToolsTest, twoSearchesThatAreAskedForComeOneAfterAnother) {
    host.fakeSettings.searchMode = SearchMode::ask;
    engine.answer(twoCalls(u"web_search"_s, {u"a"_s, u"b"_s}));
    engine.answer(Script::reply({u"So."_s}));
    chat->send(u"Go"_s);
    for (const QString &query : {u"q0"_s, u"q1"_s}) {
        ASSERT_TRUE(asks());
        EXPECT_EQ(chat->consent().pendingPermission()->query, query);
        chat->consent().resolveSearch(PermissionChoice::allow);
    }
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(queries, (QStringList{u"q0"_s, u"q1"_s}));
}

TEST_F(ToolsTest, aSearchThatIsTurnedDownIsShownAsSuch) {
    host.fakeSettings.searchMode = SearchMode::ask;
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(asks());
    chat->consent().resolveSearch(PermissionChoice::deny);
    ASSERT_TRUE(waitForTurn());
    EXPECT_TRUE(queries.isEmpty());
    EXPECT_EQ(messages().at(2).content, searchDeclined);
    EXPECT_EQ(messages().at(1).searchEvent, (SearchEvent{u"tea"_s, SearchStatus::denied, {}}));
}

TEST_F(ToolsTest, aCallInTheTextOfAModelRunsThoughTheWebIsOff) {
    host.fakeSettings.searchMode = SearchMode::off;
    engine.answer(Script::reply(
        {u"<tool_call>{\"name\":\"web_search\",\"arguments\":{\"query\":\"tea\"}}</tool_call>"_s}));
    engine.answer(Script::reply({u"So."_s}));
    say(u"Go"_s);
    EXPECT_EQ(queries, QStringList(u"tea"_s));
}

TEST_F(ToolsTest, aStopWhileASearchIsAskedForRefusesIt) {
    host.fakeSettings.searchMode = SearchMode::ask;
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(asks());
    chat->stop();
    EXPECT_FALSE(chat->consent().pendingPermission());
    ASSERT_TRUE(eventually([&] { return saved().messages.size() == 3; }));
    EXPECT_EQ(saved().messages.at(1).searchEvent->status, SearchStatus::denied);
    EXPECT_EQ(saved().messages.at(2).content, searchDeclined);
    EXPECT_TRUE(queries.isEmpty());
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(ToolsTest, aStopInTheMidstOfASearchOrAPageLeavesAnAnsweredCall) {
    holdsSearch = true;
    for (const QString &name : {u"web_search"_s, u"fetch_page"_s}) {
        chat->newChat();
        call(name, u"{\"query\":\"tea\",\"url\":\"https://tea.example/a\"}"_s);
        ASSERT_TRUE(eventually([&] { return queries.size() + fetched.size() > 0; }));
        chat->stop();
        ASSERT_TRUE(eventually([&] { return saved().messages.size() == 3; }));
        EXPECT_EQ(saved().messages.at(2).content, name == u"web_search"_s
                                                      ? u"Search is temporarily unavailable."_s
                                                      : u"That page could not be opened."_s);
        engine.forgetAnswers();
        queries.clear();
    }
}

TEST_F(ToolsTest, onlyWhatWasFoundMayBeOpened) {
    EXPECT_EQ(resultOf(u"fetch_page"_s, u"{\"url\":\"https://tea.example/a\"}"_s), u"text of the page"_s);
    EXPECT_TRUE(allowedURLs.isEmpty());
    resultOf(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    resultOf(u"fetch_page"_s, u"{\"url\":\"https://tea.example/a\"}"_s);
    EXPECT_EQ(allowedURLs, QSet<QString>{u"https://tea.example/a"_s});
    chat->newChat();
    resultOf(u"fetch_page"_s, u"{}"_s);
    EXPECT_TRUE(allowedURLs.isEmpty());
    EXPECT_EQ(fetched.last(), QString());
}

TEST_F(ToolsTest, whatTwoSearchesOfOneReplyFoundMayAllBeOpened) {
    resultOf(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    result.sources[0].url = u"https://other.example/"_s;
    resultOf(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    resultOf(u"fetch_page"_s, u"{}"_s);
    EXPECT_EQ(allowedURLs, (QSet<QString>{u"https://tea.example/a"_s, u"https://other.example"_s}));
}

TEST_F(ToolsTest, whatAChatHasFoundIsKnownWhenItIsOpenedAgain) {
    resultOf(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    const QUuid id = chat->conversation()->id;
    makeChat(services());
    chat->openConversation(id);
    resultOf(u"fetch_page"_s, u"{}"_s);
    EXPECT_EQ(allowedURLs, QSet<QString>{u"https://tea.example/a"_s});
}

TEST_F(ToolsTest, whatAnotherChatHasFoundIsNotOpened) {
    engine.answer(Script::toolCall(u"c1"_s, u"web_search"_s, u"{\"query\":\"tea\"}"_s));
    engine.answer(Script().hold().content(u"So."_s).finish(u"stop"_s).done());
    chat->send(u"Go"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    chat->newChat();
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    resultOf(u"fetch_page"_s, u"{}"_s);
    EXPECT_TRUE(allowedURLs.isEmpty());
}

TEST_F(ToolsTest, anAgreedPageIsBuiltWithoutFurtherTools) {
    call(u"offer_page"_s, u"{}"_s);
    ASSERT_TRUE(asks());
    EXPECT_EQ(chat->consent().pendingPageOffer()->messageID, messages().last().id);
    engine.forgetAnswers();
    engine.answer(Script::reply({u"```page\n# Tea\n```"_s}));
    chat->consent().resolvePage(true);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().at(2).content, u"The user agreed to the page. Reply now with the page as a single "
                                        "```page fenced block containing Markdown, then stop."_s);
    EXPECT_FALSE(body(1).contains("tools"_L1));
    ASSERT_TRUE(chat->pageDraft());
    EXPECT_EQ(chat->pageDraft()->title, u"Tea"_s);
}

TEST_F(ToolsTest, aPageThatIsTurnedDownIsNone) {
    call(u"offer_page"_s, u"{}"_s);
    ASSERT_TRUE(asks());
    chat->consent().resolvePage(false);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().at(2).content, u"The user declined the page. Answer in the chat instead."_s);
    EXPECT_TRUE(body(1).contains("tools"_L1));
    EXPECT_FALSE(chat->pageDraft());
}

TEST_F(ToolsTest, factsAreKeptOneALine) {
    for (const QString &fact : {u"first"_s, u" second\\n"_s}) {
        call(u"remember"_s, u"{\"fact\":\"%1\"}"_s.arg(fact));
        ASSERT_TRUE(asks());
        EXPECT_EQ(chat->consent().pendingMemory()->fact, fact == u"first"_s ? u"first"_s : u"second"_s);
        chat->consent().resolveMemory(true);
        ASSERT_TRUE(waitForTurn());
        EXPECT_EQ(messages().at(messages().size() - 2).content, u"Saved to the user's memory file."_s);
    }
    EXPECT_EQ(readMemory(), u"- first\n- second"_s);
    EXPECT_EQ(host.memoryText, readMemory());
    say(u"What do you know?"_s);
    EXPECT_TRUE(prompt(engine.requests().size() - 1).contains(u"- first\n- second"_s));
}

TEST_F(ToolsTest, aFactJoinsWhatIsOnDisk) {
    writeMemory(u"\n# Me\nI like tea.\n\n"_s);
    call(u"remember"_s, u"{\"fact\":\"Has a dog\"}"_s);
    ASSERT_TRUE(asks());
    chat->consent().resolveMemory(true);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(readMemory(), u"# Me\nI like tea.\n- Has a dog"_s);
}

TEST_F(ToolsTest, aFactThatIsTurnedDownIsNotKept) {
    call(u"remember"_s, u"{\"fact\":\"Has a dog\"}"_s);
    ASSERT_TRUE(asks());
    chat->consent().resolveMemory(false);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().at(2).content, memoryDeclined);
    EXPECT_EQ(readMemory(), QString());
}

TEST_F(ToolsTest, aFactOfNothingIsNeverAskedFor) {
    for (const QString &arguments : {u"{\"fact\":\" \\n\"}"_s, u"{}"_s, u"nonsense"_s})
        EXPECT_EQ(resultOf(u"remember"_s, arguments), memoryDeclined);
    host.fakeSettings.memoryEnabled = false;
    EXPECT_EQ(resultOf(u"remember"_s, u"{\"fact\":\"Has a dog\"}"_s), memoryDeclined);
}

TEST_F(ToolsTest, twoFactsOfOneReplyAreTwoCards) {
    engine.answer(twoCalls(u"remember"_s, {u"a"_s, u"b"_s}));
    engine.answer(Script::reply({u"So."_s}));
    chat->send(u"Go"_s);
    for (const QString &fact : {u"f0"_s, u"f1"_s}) {
        ASSERT_TRUE(asks());
        EXPECT_EQ(chat->consent().pendingMemory()->fact, fact);
        chat->consent().resolveMemory(true);
    }
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(readMemory(), u"- f0\n- f1"_s);
}

TEST_F(ToolsTest, namesAreComparedExactly) {
    for (const QString &name : {u"Web_Search"_s, u"web_search "_s, u"browse"_s})
        EXPECT_EQ(resultOf(name, u"{}"_s), u"Unknown tool."_s);
}

TEST_F(ToolsTest, aCardGoesOnWaitingInAChatThatIsNotOnScreen) {
    host.fakeSettings.searchMode = SearchMode::ask;
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(asks());
    const QUuid first = chat->conversation()->id;
    const QUuid message = messages().last().id;
    chat->newChat();
    EXPECT_EQ(chat->consent().pendingPermission()->messageID, message);
    chat->openConversation(first);
    EXPECT_EQ(messages().last().id, message) << "the call is still open, and nothing answered it";
    chat->consent().resolveSearch(PermissionChoice::allow);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().last().content, u"So."_s);
}

TEST_F(ToolsTest, aCardThatIsOpenWhenTheProgramEndsHurtsNobody) {
    for (const QString &name : {u"web_search"_s, u"offer_page"_s, u"remember"_s}) {
        host.fakeSettings.searchMode = SearchMode::ask;
        call(name, u"{\"query\":\"tea\",\"fact\":\"f\"}"_s);
        ASSERT_TRUE(asks());
        chat.reset();
        letPass(20);
        engine.forgetAnswers();
        makeChat(services());
    }
    EXPECT_EQ(readMemory(), QString());
}

TEST_F(ToolsTest, aStopAtTheFirstOfTwoCardsLeavesAChatThatCanBeGoneOnWith) {
    host.fakeSettings.searchMode = SearchMode::ask;
    engine.answer(twoCalls(u"web_search"_s, {u"a"_s, u"b"_s}));
    chat->send(u"Go"_s);
    ASSERT_TRUE(asks());
    chat->stop();
    letPass(30);
    engine.answer(Script::reply({u"So."_s}));
    say(u"And?"_s);
    QStringList answered;
    for (const QJsonValue value : body(1)["messages"_L1].toArray())
        answered.append(value.toObject()["tool_call_id"_L1].toString());
    answered.removeAll(QString());
    EXPECT_EQ(answered, (QStringList{u"a"_s, u"b"_s})) << "every call has its answer on the wire";
    EXPECT_EQ(messages().last().content, u"So."_s);
}

TEST_F(ToolsTest, anIdThatIsUsedAgainIsAnsweredAgain) {
    chat->newChat();
    Conversation old = *chat->conversation();
    const Message caller{.id = QUuid::createUuid(),
                         .role = Role::assistant,
                         .toolCalls = QList<ToolCall>{{u"xml_0"_s, u"web_search"_s, u"{}"_s}}};
    Message answer{.id = QUuid::createUuid(), .role = Role::tool, .content = u"found"_s};
    answer.toolCallId = u"xml_0"_s;
    Message again = caller;
    again.id = QUuid::createUuid();
    old.messages = {caller, answer, {.id = QUuid::createUuid(), .content = u"More"_s}, again};
    ChatStore().save(old);
    chat->openConversation(old.id);
    ASSERT_EQ(messages().size(), 5);
    EXPECT_EQ(messages().last().content, u"The search was interrupted."_s);
}

TEST_F(ToolsTest, whatIsSaidAfterTheLastRoundIsTheReply) {
    for (int round = 0; round < 4; ++round)
        engine.answer(Script::toolCall(u"c"_s, u"web_search"_s, u"{\"query\":\"tea\"}"_s));
    engine.answer(Script::reply(
        {u"So. <tool_call>{\"name\":\"web_search\",\"arguments\":{\"query\":\"tea\"}}</tool_call>"_s}));
    say(u"Go"_s);
    EXPECT_EQ(engine.requests().size(), 5);
    EXPECT_EQ(queries.size(), 4);
    EXPECT_EQ(last().content, u"So."_s);
    EXPECT_FALSE(last().toolCalls);
}

TEST_F(ToolsTest, twoCallsOfOneIdAreBothAnswered) {
    engine.answer(twoCalls(u"web_search"_s, {u"same"_s, u"same"_s}));
    engine.answer(Script::reply({u"So."_s}));
    say(u"Go"_s);
    EXPECT_EQ(queries, (QStringList{u"q0"_s, u"q1"_s}));
    ASSERT_EQ(messages().size(), 5);
    EXPECT_EQ(messages().at(1).searchEvent->query, u"q1"_s);
}

TEST_F(ToolsTest, aCardOfAnIdThatWasUsedBeforeHangsOnTheLaterMessage) {
    resultOf(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    host.fakeSettings.searchMode = SearchMode::ask;
    call(u"web_search"_s, u"{\"query\":\"more tea\"}"_s);
    ASSERT_TRUE(asks());
    EXPECT_EQ(chat->consent().pendingPermission()->messageID, messages().last().id);
    chat->consent().resolveSearch(PermissionChoice::allow);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().at(1).searchEvent->query, u"tea"_s);
    EXPECT_EQ(caller().searchEvent->query, u"more tea"_s);
}

TEST_F(ToolsTest, everyCardIsRefusedByAStop) {
    for (const QString &name : {u"offer_page"_s, u"remember"_s}) {
        chat->newChat();
        call(name, u"{\"fact\":\"Has a dog\"}"_s);
        ASSERT_TRUE(asks());
        chat->stop();
        EXPECT_FALSE(chat->consent().pendingPageOffer());
        EXPECT_FALSE(chat->consent().pendingMemory());
        ASSERT_TRUE(eventually([&] { return saved().messages.size() == 3; }));
        EXPECT_EQ(saved().messages.last().content,
                  name == u"remember"_s ? memoryDeclined
                                        : u"The user declined the page. Answer in the chat instead."_s);
        engine.forgetAnswers();
    }
    EXPECT_EQ(readMemory(), QString());
}

TEST_F(ToolsTest, aCardGoesWithItsChatAndWithAllChats) {
    host.fakeSettings.searchMode = SearchMode::ask;
    const QList<std::function<void()>> ends{[&] { chat->deleteConversation(chat->conversation()->id); },
                                            [&] { chat->resetAll(); }};
    for (const auto &end : ends) {
        for (const QString &name : {u"web_search"_s, u"offer_page"_s, u"remember"_s}) {
            chat->newChat();
            const QUuid id = chat->conversation()->id;
            call(name, u"{\"query\":\"tea\",\"fact\":\"Has a dog\"}"_s);
            ASSERT_TRUE(asks());
            ChatStore().remove(id);
            end();
            letPass(30);
            EXPECT_FALSE(chat->consent().pendingPermission() || chat->consent().pendingPageOffer() ||
                         chat->consent().pendingMemory());
            EXPECT_FALSE(chat->isGenerating());
            EXPECT_FALSE(ChatStore().load(id));
            engine.forgetAnswers();
        }
    }
    EXPECT_EQ(readMemory(), QString());
    EXPECT_TRUE(queries.isEmpty());
    EXPECT_EQ(host.fakeSettings.searchMode, SearchMode::ask);
}

TEST_F(ToolsTest, withoutAHostNothingIsSearchedFor) {
    auto gone = std::make_unique<FakeHost>();
    Conversation conversation = newConversation(clock.now());
    bool isPageAccepted = false;
    QSet<QString> found;
    Consent cards;
    const TurnPoints::ToolContext context{.conversation = conversation,
                                          .pageOfferAccepted = isPageAccepted,
                                          .foundURLs = found,
                                          .publish = [] {},
                                          .host = gone.get(),
                                          .consent = cards};
    gone.reset();
    const auto run = [&](const QString &name, const QString &arguments) {
        const ToolCall call{u"c"_s, name, arguments};
        return services().runTool(call, context, {});
    };
    EXPECT_EQ(await(run(u"web_search"_s, u"{\"query\":\"tea\"}"_s)), searchDeclined);
    EXPECT_TRUE(queries.isEmpty());
    auto memory = run(u"remember"_s, u"{\"fact\":\"Has a dog\"}"_s);
    cards.resolveMemory(true);
    EXPECT_EQ(await(std::move(memory)), u"Saved to the user's memory file."_s);
    EXPECT_EQ(readMemory(), QString()) << "there was nobody to save it";
}

TEST_F(ToolsTest, theSearchOfTheProgramGoesToTheSearchPage) {
    ScriptedEngine page;
    page.answer(Script(200).raw("<a class=\"result__a\" href=\"https://tea.example/\">Tea</a>"
                                "<a class=\"result__snippet\">Green.</a>"));
    const EnvironmentVariable address("OSTRELIN_SEARCHURL", page.url().toEncoded() + "/html/");
    TurnPoints points = turnServices(clock);
    points.makeTitle = nullptr;
    makeChat(points);
    EXPECT_EQ(resultOf(u"web_search"_s, u"{\"query\":\"green tea\"}"_s),
              u"[1] Tea\nhttps://tea.example/\nGreen."_s);
    ASSERT_EQ(page.requests().size(), 1);
    EXPECT_EQ(page.requests().first().body, "q=green%20tea");
    EXPECT_EQ(resultOf(u"fetch_page"_s, u"{\"url\":\"https://other.example/\"}"_s),
              u"That page was not in the search results, so it was not opened."_s);
}
