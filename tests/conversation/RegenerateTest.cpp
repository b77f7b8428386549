#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

namespace {

QList<Role> rolesOf(const QList<Message> &messages) {
    QList<Role> roles;
    for (const Message &message : messages)
        roles.append(message.role);
    return roles;
}

class RegenerateTest : public TurnFixture {
protected:
    void regenerate() {
        chat->regenerate();
        EXPECT_TRUE(waitForTurn());
    }
};

} // namespace

TEST_F(RegenerateTest, theQuestionIsAskedAgainAndTheReplyIsGone) {
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script::reply({u"two"_s}));
    say(u"Hi"_s);
    const QList<Message> before = messages();
    regenerate();
    ASSERT_EQ(rolesOf(messages()), (QList{Role::user, Role::assistant}));
    EXPECT_EQ(messages().first().content, u"Hi"_s);
    EXPECT_NE(messages().first().id, before.first().id);
    EXPECT_EQ(last().content, u"two"_s);
    EXPECT_NE(last().id, before.last().id);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(body(1)["messages"_L1].toArray().size(), 2) << "the model doesn't see its first reply";
}

TEST_F(RegenerateTest, whatWasSaidBeforeStays) {
    for (const QString &reply : {u"one"_s, u"two"_s, u"three"_s})
        engine.answer(Script::reply({reply}));
    say(u"first"_s);
    say(u"second"_s);
    const QList<Message> before = messages();
    regenerate();
    ASSERT_EQ(messages().size(), 4);
    EXPECT_EQ(messages().mid(0, 2), before.mid(0, 2));
    EXPECT_EQ(messages().at(2).content, u"second"_s);
    EXPECT_EQ(last().content, u"three"_s);
}

TEST_F(RegenerateTest, theAttachmentsGoOutAgain) {
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script::reply({u"two"_s}));
    const QList<Attachment> files{{QUuid::createUuid(), u"a.txt"_s, u"text"_s}};
    chat->send(QString(), Thinking::off, files);
    ASSERT_TRUE(waitForTurn());
    regenerate();
    EXPECT_EQ(messages().first().attachments, files);
    EXPECT_EQ(last().content, u"two"_s);
}

TEST_F(RegenerateTest, itDoesWithoutThinking) {
    engine.answer(Script().reasoning(u"hm"_s).content(u"one"_s).finish(u"stop"_s).done());
    engine.answer(Script::reply({u"two"_s}));
    say(u"Hi"_s, Thinking::on);
    regenerate();
    EXPECT_FALSE(body(1)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1].toBool(true));
    EXPECT_FALSE(last().reasoning);
}

TEST_F(RegenerateTest, theRoundsOfToolsGoWithTheReply) {
    engine.answer(Script::toolCall(u"a"_s, u"look_up"_s, u"{}"_s));
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script::reply({u"two"_s}));
    say(u"Hi"_s);
    ASSERT_EQ(rolesOf(messages()), (QList{Role::user, Role::assistant, Role::tool, Role::assistant}));
    regenerate();
    EXPECT_EQ(rolesOf(messages()), (QList{Role::user, Role::assistant}));
    EXPECT_EQ(last().content, u"two"_s);
}

TEST_F(RegenerateTest, aQuestionWithoutAReplyIsSentAgain) {
    const auto tier = std::exchange(host.tier, std::nullopt);
    say(u"Hi"_s);
    ASSERT_EQ(rolesOf(messages()), QList{Role::user});
    const QUuid before = last().id;
    host.tier = tier;
    engine.answer(Script::reply({u"one"_s}));
    regenerate();
    ASSERT_EQ(rolesOf(messages()), (QList{Role::user, Role::assistant}));
    EXPECT_NE(messages().first().id, before);
}

TEST_F(RegenerateTest, theShortenedChatIsShownFirst) {
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script().hold());
    say(u"Hi"_s);
    QList<qsizetype> counts;
    QObject::connect(chat.get(), &ChatController::conversationChanged, chat.get(),
                     [&] { counts.append(messages().size()); });
    chat->regenerate();
    EXPECT_EQ(counts.value(0, -1), 0);
    EXPECT_EQ(counts.value(1, -1), 1);
    EXPECT_EQ(saved().messages.size(), 1) << "what was thrown away is off the disk from the start";
    chat->stop();
}

TEST_F(RegenerateTest, withoutAChatOrAQuestionNothingHappens) {
    chat->regenerate();
    EXPECT_FALSE(chat->conversation());
    chat->newChat();
    const QSignalSpy changes(chat.get(), &ChatController::conversationChanged);
    clock.advance(std::chrono::seconds(10));
    chat->regenerate();
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(RegenerateTest, duringATurnNothingHappens) {
    engine.answer(Script().content(u"half"_s).hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return !messages().isEmpty() && last().content == u"half"_s; }));
    const QList<Message> before = messages();
    chat->regenerate();
    EXPECT_EQ(messages(), before);
    // Nor while the turn of another chat runs.
    chat->newChat();
    const QUuid id = chat->conversation()->id;
    chat->regenerate();
    EXPECT_EQ(chat->conversation()->id, id);
    EXPECT_EQ(engine.requests().size(), 1);
    chat->stop();
}

TEST_F(RegenerateTest, rightAfterAStopTheNewReplyIsTheOneThatStays) {
    engine.answer(Script().content(u"half"_s).hold());
    engine.answer(Script::reply({u"two"_s}));
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return !messages().isEmpty() && last().content == u"half"_s; }));
    chat->stop();
    regenerate();
    ASSERT_EQ(rolesOf(messages()), (QList{Role::user, Role::assistant}));
    EXPECT_EQ(last().content, u"two"_s);
    EXPECT_EQ(saved(), *chat->conversation());
}
