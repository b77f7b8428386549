#include "conversation/TurnFixture.h"

using namespace Qt::StringLiterals;

using ChatControllerTest = TurnFixture;

TEST_F(ChatControllerTest, aNewChatIsOnScreenAndOnDiskAtOnce) {
    chat->newChat();
    EXPECT_EQ(chat->conversation()->title, u"New chat"_s);
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_FALSE(chat->conversation()->droppedCount);
    EXPECT_EQ(chat->conversation()->createdAt, clock.now());
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(chat->summaries(), (QList{summaryOf(*chat->conversation())}));
}

TEST_F(ChatControllerTest, aTurnAppendsTheQuestionAndTheReply) {
    engine.answer(Script::reply({u"Hel"_s, u"lo."_s}));
    say(u"  Hi\n"_s);
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages().at(0).role, Role::user);
    EXPECT_EQ(messages().at(0).content, u"Hi"_s);
    EXPECT_FALSE(messages().at(0).attachments);
    EXPECT_EQ(messages().at(1).role, Role::assistant);
    EXPECT_EQ(messages().at(1).content, u"Hello."_s);
    EXPECT_FALSE(messages().at(1).reasoning);
    EXPECT_FALSE(messages().at(1).toolCalls);
    EXPECT_NE(messages().at(0).id, messages().at(1).id);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(chat->conversation()->title, u"New chat"_s);
}

TEST_F(ChatControllerTest, theRequestIsThatOfTheTiersSampling) {
    engine.answer(Script::reply({u"a"_s}));
    say(u"Hi"_s);
    EXPECT_EQ(body(0)["temperature"_L1].toDouble(), 0.7);
    EXPECT_EQ(body(0)["presence_penalty"_L1].toDouble(), 1.5);
    EXPECT_EQ(body(0)["max_tokens"_L1].toInt(), 4096);
    EXPECT_EQ(body(0)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1].toBool(true), false);
    EXPECT_FALSE(body(0).contains("tools"_L1));
    EXPECT_FALSE(body(0).contains("continue_final_message"_L1));
    EXPECT_EQ(engine.requests().first().headers.value("authorization"), "Bearer secret");
    EXPECT_TRUE(prompt(0).startsWith(u"You are Ostrelin"_s));
    // The empty message that the reply goes into isn't sent.
    EXPECT_EQ(body(0)["messages"_L1].toArray().size(), 2);
}

TEST_F(ChatControllerTest, thinkingUsesItsOwnSampling) {
    engine.answer(
        Script().reasoning(u"let me "_s).reasoning(u"see"_s).content(u"Yes."_s).finish(u"stop"_s).done());
    say(u"Hi"_s, Thinking::on);
    EXPECT_EQ(body(0)["temperature"_L1].toDouble(), 0.6);
    EXPECT_EQ(body(0)["top_k"_L1].toInt(), 30);
    EXPECT_EQ(body(0)["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1].toBool(), true);
    EXPECT_EQ(last().reasoning, u"let me see"_s);
    EXPECT_EQ(last().content, u"Yes."_s);
}

TEST_F(ChatControllerTest, earlierTurnsGoOutWithTheNextOne) {
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script::reply({u"two"_s}));
    say(u"first"_s);
    say(u"second"_s);
    const QJsonArray wire = body(1)["messages"_L1].toArray();
    ASSERT_EQ(wire.size(), 4);
    EXPECT_EQ(wire.at(2).toObject()["content"_L1].toString(), u"one"_s);
    EXPECT_EQ(wire.at(3).toObject()["content"_L1].toString(), u"second"_s);
}

TEST_F(ChatControllerTest, blanksAloneAreNotSent) {
    chat->newChat();
    const Conversation before = *chat->conversation();
    chat->send(u" \n\t "_s);
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_EQ(*chat->conversation(), before);
}

TEST_F(ChatControllerTest, anAttachmentAloneIsSent) {
    engine.answer(Script::reply({u"ok"_s}));
    const QList<Attachment> files{{QUuid::createUuid(), u"a.txt"_s, u"text"_s}};
    chat->send(QString(), Thinking::off, files);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(messages().first().content, QString());
    EXPECT_EQ(messages().first().attachments, files);
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(ChatControllerTest, sendingDuringATurnIsIgnored) {
    engine.answer(Script().content(u"a"_s).hold().done());
    chat->send(u"first"_s);
    EXPECT_TRUE(chat->isGenerating());
    chat->send(u"second"_s);
    engine.goOn();
    ASSERT_TRUE(eventually([&] {
        engine.goOn();
        return !chat->isGenerating();
    }));
    EXPECT_EQ(messages().size(), 2);
    EXPECT_EQ(engine.requests().size(), 1);
}

TEST_F(ChatControllerTest, theQuestionIsOnDiskFromTheMomentTheTurnBegins) {
    engine.answer(Script().content(u"half"_s).hold());
    chat->send(u"Hi"_s);
    const QList question{messages().first()};
    EXPECT_EQ(saved().messages, question);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    EXPECT_EQ(saved().messages, question);
    EXPECT_EQ(chat->summaries().first().characterCount, 0);
}

TEST_F(ChatControllerTest, theRowOfTheChatFollowsTheQuestion) {
    engine.answer(Script().hold());
    chat->send(QString(40, u'q'));
    EXPECT_EQ(chat->summaries().first().characterCount, 10);
    chat->stop();
}

TEST_F(ChatControllerTest, theTimeOfTheLastChangeFollowsEveryStep) {
    using std::chrono::seconds;
    engine.answer(Script().hold().content(u"a"_s).hold().content(u"b"_s).finish(u"stop"_s).done());
    chat->newChat();
    const QDateTime made = chat->conversation()->createdAt;
    clock.advance(seconds(10));
    chat->send(u"Hi"_s);
    EXPECT_EQ(chat->conversation()->updatedAt, made.addSecs(10));
    EXPECT_EQ(saved().updatedAt, made.addSecs(10));
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 1; }));
    clock.advance(seconds(10));
    engine.goOn();
    ASSERT_TRUE(eventually([&] { return last().content == u"a"_s; }));
    EXPECT_EQ(chat->conversation()->updatedAt, made.addSecs(20));
    clock.advance(seconds(10));
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(chat->conversation()->updatedAt, made.addSecs(30));
    EXPECT_EQ(saved().updatedAt, made.addSecs(30));
    EXPECT_EQ(saved().createdAt, made);
}

TEST_F(ChatControllerTest, thePromptTellsTheDateAndTheMemory) {
    host.memoryText = u"- likes kumquats"_s;
    engine.answer(Script::reply({u"a"_s}));
    say(u"Hi"_s);
    EXPECT_TRUE(prompt(0).contains(
        QLocale::system().toString(clock.now().toLocalTime().date(), QLocale::LongFormat)));
    EXPECT_TRUE(prompt(0).endsWith(u"- likes kumquats"_s));
    host.fakeSettings.memoryEnabled = false;
    say(u"Hi"_s);
    EXPECT_FALSE(prompt(1).contains(u"kumquats"_s));
}

TEST_F(ChatControllerTest, theStreamedMessageIsKnownWhileItGrows) {
    engine.answer(Script().content(u"half"_s).hold().content(u" done"_s).done());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    EXPECT_EQ(chat->streamingID(), last().id);
    EXPECT_EQ(chat->generatingID(), chat->conversation()->id);
    ASSERT_TRUE(eventually([&] {
        engine.goOn();
        return !chat->isGenerating();
    }));
    EXPECT_FALSE(chat->streamingID());
    EXPECT_FALSE(chat->generatingID());
    EXPECT_EQ(last().content, u"half done"_s);
}

TEST_F(ChatControllerTest, publishingIsLimitedToOneUpdateInFiftyMilliseconds) {
    Script script;
    for (int index = 0; index < 200; ++index)
        script.content(u"x"_s);
    engine.answer(script.finish(u"stop"_s).done());
    chat->newChat();
    int updates = 0;
    QObject::connect(chat.get(), &ChatController::conversationChanged, chat.get(), [&] { ++updates; });
    say(u"Hi"_s);
    // The clock stands still: the question, the empty reply, its first text, its end, and the saved turn.
    EXPECT_EQ(updates, 5);
    EXPECT_EQ(last().content, QString(200, u'x'));
}

TEST_F(ChatControllerTest, afterFiftyMillisecondsTheTextIsPublishedAgain) {
    engine.answer(Script().content(u"a"_s).hold().content(u"b"_s).hold().content(u"c"_s).hold().done());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"a"_s; }));
    clock.advance(std::chrono::milliseconds(49));
    engine.goOn();
    letPass(100);
    EXPECT_EQ(last().content, u"a"_s);
    clock.advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(eventually([&] { return last().content == u"ab"_s; })) << "with nothing more to come yet";
    clock.advance(std::chrono::milliseconds(50));
    engine.goOn();
    EXPECT_TRUE(eventually([&] { return last().content == u"abc"_s; }));
    chat->stop();
}

TEST_F(ChatControllerTest, aStopKeepsTheReplyAsFarAsItHadCome) {
    engine.answer(Script().content(u"half"_s).hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    chat->stop();
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_FALSE(chat->streamingID());
    EXPECT_FALSE(chat->generatingID());
    EXPECT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    EXPECT_EQ(saved().messages.last().content, u"half"_s);
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
}

TEST_F(ChatControllerTest, aStopBeforeTheFirstWordLeavesAnEmptyReply) {
    engine.answer(Script().hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 1; }));
    chat->stop();
    EXPECT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    EXPECT_EQ(saved().messages.last().content, QString());
}

TEST_F(ChatControllerTest, aStopAfterAStopIsNothing) {
    chat->stop();
    chat->stop();
    EXPECT_FALSE(chat->isGenerating());
}

TEST_F(ChatControllerTest, aChatThatIsNotOnScreenGoesOnUnseen) {
    engine.answer(Script().content(u"half"_s).hold().content(u" done"_s).finish(u"stop"_s).done());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    const QUuid first = chat->conversation()->id;
    chat->newChat();
    EXPECT_TRUE(chat->isGenerating());
    ASSERT_TRUE(eventually([&] {
        engine.goOn();
        return !chat->isGenerating();
    }));
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_TRUE(saved().messages.isEmpty());
    EXPECT_EQ(ChatStore().load(first)->messages.last().content, u"half done"_s);
}

TEST_F(ChatControllerTest, aLongChatCountsWhatItLeavesOutAndForgetsItAgain) {
    host.tier->contextLength = 400;
    engine.answer(Script::reply({QString(350, u'a')}));
    engine.answer(Script::reply({u"b"_s}));
    engine.answer(Script::reply({u"c"_s}));
    say(QString(350, u'x'));
    EXPECT_FALSE(chat->conversation()->droppedCount);
    say(QString(350, u'y'));
    EXPECT_EQ(chat->conversation()->droppedCount, 1);
    EXPECT_EQ(saved().droppedCount, 1);
    host.tier->contextLength = 100'000;
    say(u"z"_s);
    EXPECT_FALSE(chat->conversation()->droppedCount);
    EXPECT_FALSE(saved().droppedCount);
}

TEST_F(ChatControllerTest, aScheduledRunIsATurnInAChatOfItsOwn) {
    engine.answer(Script::reply({u"Done."_s}));
    chat->runSchedule(u"Morning news"_s, u"Summarise."_s);
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(chat->conversation()->title, u"Morning news"_s);
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(messages().first().content, u"Summarise."_s);
    EXPECT_EQ(last().content, u"Done."_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(body(0)["messages"_L1].toArray().size(), 2);
    EXPECT_EQ(chat->summaries().size(), 1);
}

TEST_F(ChatControllerTest, aScheduledRunWithoutANameHasOneAllTheSame) {
    engine.answer(Script::reply({u"Done."_s}));
    chat->runSchedule(QString(), u"Go."_s);
    EXPECT_EQ(chat->conversation()->title, u"Scheduled run"_s);
    ASSERT_TRUE(waitForTurn());
}

TEST_F(ChatControllerTest, aScheduledRunDuringATurnIsSkipped) {
    engine.answer(Script().hold());
    chat->send(u"Hi"_s);
    const QUuid id = chat->conversation()->id;
    chat->runSchedule(u"Later"_s, u"Go."_s);
    EXPECT_EQ(chat->conversation()->id, id);
    EXPECT_EQ(chat->summaries().size(), 1);
    chat->stop();
}

TEST_F(ChatControllerTest, aControllerThatGoesAwayInTheMiddleLeavesNothingBehind) {
    engine.answer(Script().content(u"half"_s).hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    const QUuid id = chat->conversation()->id;
    chat.reset();
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
    EXPECT_EQ(ChatStore().load(id)->messages.size(), 1) << "the chat stands as last saved";
}

TEST_F(ChatControllerTest, manyChunksLoseNothing) {
    Script script;
    QString expected;
    QString run;
    for (int index = 0; index < 2000; ++index) {
        run = QString::number(index) + u' ';
        script.content(run);
        expected += run;
    }
    engine.answer(script.finish(u"stop"_s).done());
    say(u"Count."_s);
    EXPECT_EQ(last().content, expected);
}
