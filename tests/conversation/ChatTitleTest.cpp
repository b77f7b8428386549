#include "conversation/ChatTitle.h"

#include "conversation/TurnFixture.h"
#include "conversation/TurnServices.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

// What the model calls a chat.

namespace {

Script answer(const QString &text, Script beginning = Script(200)) {
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, text}};
    const QJsonObject choice{{u"message"_s, message}};
    return beginning.raw(
        QJsonDocument(QJsonObject{{u"choices"_s, QJsonArray{choice}}}).toJson(QJsonDocument::Compact));
}

class ChatTitleTest : public TurnFixture {
protected:
    ChatTitleTest() { makeChat(turnServices(clock)); }

    /// A turn after which the model calls the chat this.
    void sayTitled(const QString &text, const Script &title) {
        engine.answer(Script::reply({u"Sure."_s}));
        engine.answer(title);
        say(text);
    }

    QString title() const {
        EXPECT_EQ(saved().title, chat->conversation()->title);
        EXPECT_EQ(chat->summaries().first().title, chat->conversation()->title);
        return chat->conversation()->title;
    }
};

} // namespace

TEST_F(ChatTitleTest, theModelIsAskedAboutTheFirstQuestionAlone) {
    const QList<Attachment> files{{QUuid::createUuid(), u"a.txt"_s, u"text of the file"_s}};
    engine.answer(Script::reply({u"Sure."_s}));
    engine.answer(answer(u"Budget plan"_s));
    chat->send(u"Plan my budget"_s, Thinking::on, files);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(title(), u"Budget plan"_s);
    ASSERT_EQ(engine.requests().size(), 2);
    EXPECT_EQ(body(1)["messages"_L1].toArray(),
              (QJsonArray{QJsonObject{{u"role"_s, u"user"_s},
                                      {u"content"_s, u"Give this conversation a title of 6 words or fewer. "
                                                     "Reply with the title only.\n\nPlan my budget"_s}}}));
    EXPECT_EQ(body(1)["max_tokens"_L1], 20);
    EXPECT_EQ(body(1)["stream"_L1], false);
    EXPECT_EQ(body(1)["temperature"_L1], 0.7);
    EXPECT_EQ(body(1)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1], false);
    EXPECT_FALSE(body(1).contains("tools"_L1));
}

TEST_F(ChatTitleTest, quotesAndBlanksAroundAreLeftOut) {
    sayTitled(u"Hi"_s, answer(u"\n \"Budget\" plan\" \n"_s));
    EXPECT_EQ(title(), u"Budget plan"_s);
}

TEST_F(ChatTitleTest, aTitleOfNothingIsNoneAndIsAskedForAgain) {
    sayTitled(u"Hi"_s, answer(u" \"\" "_s));
    EXPECT_EQ(title(), u"New chat"_s);
    sayTitled(u"Hi"_s, Script(500));
    EXPECT_EQ(title(), u"New chat"_s);
    sayTitled(u"Hi"_s, Script(200).raw("nonsense"));
    EXPECT_EQ(title(), u"New chat"_s);
    sayTitled(u"Hi"_s, answer(u"At last"_s));
    EXPECT_EQ(title(), u"At last"_s);
}

TEST_F(ChatTitleTest, aLongTitleIsCutAfter80Characters) {
    const QString family = u"👨‍👩‍👧‍👦"_s;
    sayTitled(u"Hi"_s, answer(family.repeated(100)));
    EXPECT_EQ(title(), family.repeated(80));
}

TEST_F(ChatTitleTest, aTitleIsMadeOnce) {
    sayTitled(u"Hi"_s, answer(u"First"_s));
    engine.answer(Script::reply({u"Sure."_s}));
    say(u"Again"_s);
    EXPECT_EQ(title(), u"First"_s);
    EXPECT_EQ(engine.requests().size(), 3);
}

TEST_F(ChatTitleTest, aNameThatThePersonGaveStays) {
    chat->newChat();
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    engine.answer(Script::reply({u"Sure."_s}));
    say(u"Hi"_s);
    EXPECT_EQ(title(), u"Mine"_s);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(ChatTitleTest, aChatThatIsNamedAsNewByHandGetsAnother) {
    chat->newChat();
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    chat->renameConversation(chat->conversation()->id, u"New chat"_s);
    sayTitled(u"Hi"_s, answer(u"Made"_s));
    EXPECT_EQ(title(), u"Made"_s);
}

TEST_F(ChatTitleTest, aReplyThatFailedGetsNoTitle) {
    engine.answer(Script(500));
    say(u"Hi"_s);
    EXPECT_EQ(title(), u"New chat"_s);
    EXPECT_EQ(engine.requests().size(), 1);
    sayTitled(u"Again"_s, answer(u"Good"_s));
    EXPECT_EQ(title(), u"Good"_s);
}

TEST_F(ChatTitleTest, aNameThatIsGivenDuringTheReplyStays) {
    engine.answer(Script().content(u"half"_s).hold().content(u" more"_s).finish(u"stop"_s).done());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(title(), u"Mine"_s);
    EXPECT_EQ(engine.requests().size(), 1) << "nobody needs another title";
}

TEST_F(ChatTitleTest, aNameThatIsGivenWhileTheTitleIsMadeStays) {
    engine.answer(Script::reply({u"Sure."_s}));
    engine.answer(answer(u"Made"_s, Script(200).hold()));
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(title(), u"Mine"_s);
}

TEST_F(ChatTitleTest, withoutAnEngineOrAModelNobodyIsAsked) {
    for (const bool hasEngine : {false, true}) {
        TurnPoints points = turnServices(clock);
        points.finishPage = [&](Conversation &, bool, const QDateTime &) {
            if (hasEngine)
                host.tier.reset();
            else
                host.url.reset();
            return std::nullopt;
        };
        makeChat(points);
        const qsizetype before = engine.requests().size();
        engine.answer(Script::reply({u"Sure."_s}));
        say(u"Hi"_s);
        EXPECT_EQ(engine.requests().size(), before + 1);
        EXPECT_EQ(title(), u"New chat"_s);
        host.url = engine.url();
    }
}

TEST_F(ChatTitleTest, theTitleReachesAChatThatIsNotOnScreen) {
    engine.answer(Script::reply({u"Sure."_s}));
    engine.answer(answer(u"Unseen"_s, Script(200).hold()));
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    const QUuid first = chat->conversation()->id;
    chat->newChat();
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(ChatStore().load(first)->title, u"Unseen"_s);
    EXPECT_EQ(chat->conversation()->title, u"New chat"_s);
    EXPECT_EQ(chat->summaries().last().title, u"Unseen"_s);
}
