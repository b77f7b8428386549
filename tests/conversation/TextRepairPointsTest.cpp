#include "conversation/TextRepairPoints.h"

#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

using TextRepairPointsTest = TurnFixture;

TEST_F(TextRepairPointsTest, thinkingThatWasWrittenIsTheReasoning) {
    makeChat(textRepairPoints());
    engine.answer(Script::reply({u"<thi"_s, u"nk>hm</think>\n\nHi"_s}));
    say(u"Go"_s);
    EXPECT_EQ(last().reasoning, u"hm"_s);
    EXPECT_EQ(last().content, u"Hi"_s);
}

TEST_F(TextRepairPointsTest, aCallThatWasWrittenIsMade) {
    TurnPoints points = textRepairPoints();
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

TEST_F(TextRepairPointsTest, aReplyWithoutTagsStaysAsItCame) {
    makeChat(textRepairPoints());
    engine.answer(Script::reply({u" Hi \n"_s}));
    say(u"Go"_s);
    EXPECT_EQ(last().content, u" Hi \n"_s);
    EXPECT_FALSE(last().reasoning);
}
