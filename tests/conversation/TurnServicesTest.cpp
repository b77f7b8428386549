#include "conversation/TurnServices.h"

#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

namespace {

class TurnServicesTest : public TurnFixture {
protected:
    /// Waits until the engine has nothing to do for a reply that isn't over.
    bool rests() {
        return eventually([this] {
                   return !engine.requests().isEmpty() && engine.openConnections() == 0 &&
                          clock.hasSleepers();
               }) &&
               chat->isGenerating();
    }
};

} // namespace

TEST_F(TurnServicesTest, thinkingThatWasWrittenIsTheReasoning) {
    makeChat(turnServices(clock));
    engine.answer(Script::reply({u"<thi"_s, u"nk>hm</think>\n\nHi"_s}));
    say(u"Go"_s);
    EXPECT_EQ(last().reasoning, u"hm"_s);
    EXPECT_EQ(last().content, u"Hi"_s);
}

TEST_F(TurnServicesTest, aCallThatWasWrittenIsMade) {
    TurnPoints points = turnServices(clock);
    points.runTool = [](ToolCall call, TurnPoints::ToolContext, std::stop_token) -> Task<QString> {
        co_return call.name + call.arguments;
    };
    makeChat(points);
    engine.answer(Script::reply({u"So. <tool_call>{\"name\":\"f\",\"arguments\":{\"a\":1}}</tool_call>"_s}));
    engine.answer(Script::reply({u"ok"_s}));
    say(u"Go"_s);
    ASSERT_EQ(messages().size(), 4);
    EXPECT_EQ(messages().at(1).content, u"So."_s);
    EXPECT_EQ(messages().at(1).toolCalls, (QList<ToolCall>{{u"xml_0"_s, u"f"_s, u"{\"a\":1}"_s}}));
    EXPECT_EQ(messages().at(2).content, u"f{\"a\":1}"_s);
    EXPECT_EQ(last().content, u"ok"_s);
}

TEST_F(TurnServicesTest, aReplyWithoutTagsStaysAsItCame) {
    makeChat(turnServices(clock));
    engine.answer(Script::reply({u" Hi \n"_s}));
    say(u"Go"_s);
    EXPECT_EQ(last().content, u" Hi \n"_s);
    EXPECT_FALSE(last().reasoning);
}

TEST_F(TurnServicesTest, aGentleSpeedRestsBetweenBursts) {
    makeChat(turnServices(clock));
    host.fakeSettings.responseSpeed = ResponseSpeed::slowYourRoll;
    engine.answer(Script::reply({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"never"_s}));
    engine.answer(Script::reply({u"7"_s}));
    chat->send(u"Go"_s, Thinking::off);
    ASSERT_TRUE(rests());
    clock.advance(std::chrono::seconds(5));
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(last().content, u"1234567"_s);
    EXPECT_EQ(engine.requests().size(), 3) << "the last one is for the title";
}

TEST_F(TurnServicesTest, aTurnIsStoppedWithinARest) {
    makeChat(turnServices(clock));
    host.fakeSettings.responseSpeed = ResponseSpeed::slowYourRoll;
    engine.answer(Script::reply({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s}));
    chat->send(u"Go"_s, Thinking::off);
    ASSERT_TRUE(rests());
    chat->stop();
    EXPECT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    EXPECT_EQ(saved().messages.last().content, u"123456"_s);
    clock.advance(std::chrono::hours(1));
    letPass(20);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(TurnServicesTest, theWholeBurstIsOnScreenDuringTheRest) {
    makeChat(turnServices(clock));
    host.fakeSettings.responseSpeed = ResponseSpeed::slowYourRoll;
    engine.answer(Script::reply({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s}));
    chat->send(u"Go"_s, Thinking::off);
    ASSERT_TRUE(rests());
    const QSignalSpy shown(chat.get(), &ChatController::conversationChanged);
    clock.advance(std::chrono::milliseconds(50));
    EXPECT_TRUE(eventually([&] { return last().content == u"123456"_s; }));
    clock.advance(std::chrono::seconds(1));
    letPass(20);
    EXPECT_EQ(shown.count(), 1) << "nothing has changed since";
    chat->stop();
}

TEST_F(TurnServicesTest, anotherSpeedTakesEffectFromTheNextTurnOn) {
    makeChat(turnServices(clock));
    host.fakeSettings.responseSpeed = ResponseSpeed::slowYourRoll;
    engine.answer(Script::reply({u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s}));
    engine.answer(Script::reply({u"7"_s, u"8"_s, u"9"_s, u"a"_s, u"b"_s, u"c"_s, u"never"_s}));
    chat->send(u"Go"_s, Thinking::off);
    ASSERT_TRUE(rests());
    host.fakeSettings.responseSpeed = ResponseSpeed::full;
    clock.advance(std::chrono::seconds(5));
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    ASSERT_TRUE(rests()) << "this reply is as gentle as it began";
    chat->stop();
}
