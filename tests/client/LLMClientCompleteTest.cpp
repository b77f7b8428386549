#include "client/LLMClient.h"
#include "support/Await.h"
#include "support/ScriptedEngine.h"

using namespace Qt::StringLiterals;

namespace {

class Complete : public ::testing::Test {
protected:
    QString complete() {
        const LLMClient client{engine.url(), u"key"_s};
        return await(client.complete({}, Sampling(), 20, {}));
    }

    QString failure() {
        try {
            complete();
        } catch (const OstrelinError &error) {
            return error.description();
        }
        return u"no failure"_s;
    }

    ScriptedEngine engine;
};

} // namespace

TEST_F(Complete, theTextOfTheFirstChoiceIsTheReply) {
    engine.answer(Script().raw(R"({"choices":[{"message":{"role":"assistant","content":"Budget plan"}}]})"));
    EXPECT_EQ(complete(), u"Budget plan"_s);
    ASSERT_EQ(engine.requests().size(), 1);
    EXPECT_EQ(engine.requests().first().line, "POST /v1/chat/completions HTTP/1.1");
    EXPECT_EQ(engine.requests().first().headers.value("authorization"), "Bearer key");
    EXPECT_EQ(engine.requests().first().headers.value("content-type"), "application/json");
}

TEST_F(Complete, aReplyInManyPiecesIsReadWhole) {
    Script script;
    for (const char byte : QByteArray(R"({"choices":[{"message":{"content":"Grüße"}}]})"))
        script.raw(QByteArray(1, byte));
    engine.answer(script);
    EXPECT_EQ(complete(), u"Grüße"_s);
}

TEST_F(Complete, aReplyWithoutTheTextIsEmptyAndNoFailure) {
    for (const char *body :
         {"{}", "[]", R"({"choices":[]})", R"({"choices":7})", R"({"choices":["x"]})",
          R"({"choices":[{"message":{}}]})", R"({"choices":[{"message":{"content":null}}]})",
          R"({"choices":[{"message":{"content":7}}]})"}) {
        ScriptedEngine other;
        other.answer(Script().raw(body));
        const LLMClient client{other.url(), {}};
        EXPECT_EQ(await(client.complete({}, Sampling(), 20, {})), QString()) << body;
    }
}

TEST_F(Complete, aReplyThatIsNotJsonIsAFailure) {
    engine.answer(Script().raw("oops"));
    EXPECT_THROW(complete(), JsonError);
}

TEST_F(Complete, aWrongKeyHasASentenceOfItsOwn) {
    engine.answer(Script(401).raw("{}"));
    EXPECT_EQ(failure(), u"The engine rejected the request."_s);
}

TEST_F(Complete, anyOtherStatusIsAFailedReplyWithoutTheServersWords) {
    for (const int status : {199 + 1 + 100, 304, 400, 404, 500, 503}) {
        ScriptedEngine other;
        other.answer(Script(status).raw("internal detail"));
        const LLMClient client{other.url(), {}};
        try {
            await(client.complete({}, Sampling(), 20, {}));
            ADD_FAILURE() << status;
        } catch (const OstrelinError &error) {
            EXPECT_EQ(error.description(), u"Ostrelin couldn't complete that reply."_s) << status;
        }
    }
}

TEST_F(Complete, aRefusalIsToldBeforeTheBodyHasEnded) {
    engine.answer(Script(500).raw("partial").hold());
    EXPECT_EQ(failure(), u"Ostrelin couldn't complete that reply."_s);
}

TEST_F(Complete, aStopEndsTheWaitAndClosesTheConnection) {
    engine.answer(Script().hold());
    std::stop_source stop;
    const LLMClient client{engine.url(), {}};
    bool cancelled = false;
    const auto run = [](LLMClient llm, std::stop_token token, bool *flag) -> Task<> {
        try {
            co_await llm.complete({}, Sampling(), 20, token);
        } catch (const Cancelled &) {
            *flag = true;
        }
    };
    const Task<> task = run(client, stop.get_token(), &cancelled);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 1; }));
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return cancelled; }));
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
}

TEST(CompleteWithoutAServer, aRefusedConnectionIsTheSystemsOwnError) {
    const LLMClient client{QUrl(u"http://127.0.0.1:9"_s), {}};
    EXPECT_THROW(await(client.complete({}, Sampling(), 20, {})), HttpError);
}
