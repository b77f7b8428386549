#include "conversation/TurnFixture.h"
#include "platform/MemoryPressure.h"

#include <QFile>

using namespace Qt::StringLiterals;

// Opening, renaming and deleting chats, also while a turn runs in them, and the watch on memory.

namespace {

class ChatServicesTest : public TurnFixture {
protected:
    /// A chat on disk that isn't on screen.
    Conversation onDisk(const QString &title, const QList<Message> &messages = {}) {
        Conversation other = newConversation(clock.now().addDays(-1), title);
        other.messages = messages;
        ChatStore().save(other);
        chat->reloadSummaries();
        return other;
    }

    /// Begins a turn whose reply stays half.
    void sayHalf() {
        engine.answer(Script().content(u"half"_s).hold().content(u" more"_s).finish(u"stop"_s).done());
        chat->send(u"Hi"_s);
        ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    }

    static Message calling(const QStringList &ids) {
        Message message{.id = QUuid::createUuid(), .role = Role::assistant};
        message.toolCalls.emplace();
        for (const QString &id : ids)
            message.toolCalls->append({id, u"web_search"_s, u"{}"_s});
        return message;
    }

    static Message answering(const QString &id) {
        Message message{.id = QUuid::createUuid(), .role = Role::tool, .content = u"found"_s};
        message.toolCallId = id;
        return message;
    }

    /// As the system tells it.
    void runShortOfMemory() {
        auto *const source = chat->findChild<MemoryPressure *>();
        ASSERT_TRUE(source) << "nobody watches";
        Q_EMIT source->critical();
    }

    QString titleInList(const QUuid &id) const {
        for (const ConversationSummary &row : chat->summaries()) {
            if (row.id == id)
                return row.title;
        }
        return {};
    }
};

} // namespace

TEST_F(ChatServicesTest, aChatIsOpenedFromDisk) {
    chat->newChat();
    const Conversation other = onDisk(u"Other"_s, {{.id = QUuid::createUuid(), .content = u"Hi"_s}});
    const QSignalSpy shown(chat.get(), &ChatController::conversationChanged);
    chat->openConversation(other.id);
    EXPECT_EQ(*chat->conversation(), other);
    EXPECT_EQ(shown.count(), 1);
    EXPECT_EQ(*ChatStore().load(other.id), other) << "looking changes nothing";
}

TEST_F(ChatServicesTest, aChatThatCannotBeReadLeavesThePresentOne) {
    chat->newChat();
    const Conversation before = *chat->conversation();
    const Conversation other = onDisk(u"Other"_s);
    QFile file(chatFile(other.id));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{");
    file.close();
    chat->openConversation(other.id);
    chat->openConversation(QUuid::createUuid());
    EXPECT_EQ(*chat->conversation(), before);
}

TEST_F(ChatServicesTest, openCallsAreAnsweredWhenAChatIsOpened) {
    const Conversation other = onDisk(u"Other"_s, {calling({u"a"_s, u"b"_s})});
    chat->openConversation(other.id);
    ASSERT_EQ(messages().size(), 3);
    for (const int index : {1, 2}) {
        EXPECT_EQ(messages().at(index).role, Role::tool);
        EXPECT_EQ(messages().at(index).content, u"The search was interrupted."_s);
    }
    EXPECT_EQ(messages().at(1).toolCallId, u"a"_s);
    EXPECT_EQ(messages().at(2).toolCallId, u"b"_s);
    EXPECT_NE(messages().at(1).id, messages().at(2).id);
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(ChatServicesTest, anAnswerBeforeACallIsNotItsOwn) {
    // The ids of calls that a model writes as text come again in every reply.
    const Conversation other = onDisk(u"Other"_s, {calling({u"xml_0"_s}),
                                                   answering(u"xml_0"_s),
                                                   {.id = QUuid::createUuid(), .content = u"More"_s},
                                                   calling({u"xml_0"_s, u"xml_1"_s}),
                                                   answering(u"xml_0"_s)});
    chat->openConversation(other.id);
    ASSERT_EQ(messages().size(), 6);
    EXPECT_EQ(messages().last().toolCallId, u"xml_1"_s);
}

TEST_F(ChatServicesTest, onlyCallsOfTheLastReplyWithoutAnAnswerAreOpen) {
    for (const QList<Message> &messages :
         {QList{calling({u"a"_s}), answering(u"a"_s)},
          QList{calling({u"a"_s}), Message{.id = QUuid::createUuid(), .content = u"Hi"_s}},
          QList{calling({})}, QList<Message>()}) {
        const Conversation other = onDisk(u"Other"_s, messages);
        chat->openConversation(other.id);
        EXPECT_EQ(*chat->conversation(), other);
    }
}

TEST_F(ChatServicesTest, aTurnGoesOnUnseenAndIsSeenAgain) {
    sayHalf();
    const QUuid first = chat->conversation()->id;
    const Conversation other = onDisk(u"Other"_s);
    chat->openConversation(other.id);
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_TRUE(messages().isEmpty());
    chat->openConversation(first);
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(last().content, u"half"_s) << "though it isn't on disk yet";
    chat->openConversation(other.id);
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(ChatStore().load(first)->messages.last().content, u"half more"_s);
}

TEST_F(ChatServicesTest, aChatIsRenamedOnDiskOnScreenAndInTheList) {
    chat->newChat();
    const QUuid id = chat->conversation()->id;
    clock.advance(std::chrono::hours(1));
    chat->renameConversation(id, u" Mine "_s);
    EXPECT_EQ(chat->conversation()->title, u" Mine "_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(saved().updatedAt, clock.now());
    EXPECT_EQ(titleInList(id), u" Mine "_s);
}

TEST_F(ChatServicesTest, aChatThatIsNotOnScreenIsRenamedToo) {
    chat->newChat();
    const Conversation before = *chat->conversation();
    const Conversation other = onDisk(u"Other"_s);
    chat->renameConversation(other.id, u"Mine"_s);
    EXPECT_EQ(ChatStore().load(other.id)->title, u"Mine"_s);
    EXPECT_EQ(titleInList(other.id), u"Mine"_s);
    EXPECT_EQ(*chat->conversation(), before);
    chat->renameConversation(QUuid::createUuid(), u"Nobody"_s);
    EXPECT_EQ(chat->summaries().size(), 2);
}

TEST_F(ChatServicesTest, aNameGivenDuringATurnOutlivesIt) {
    sayHalf();
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    EXPECT_EQ(last().content, u"half"_s);
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(chat->conversation()->title, u"Mine"_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(saved().messages.last().content, u"half more"_s);
}

TEST_F(ChatServicesTest, aNameGivenDuringATurnOutlivesItsStop) {
    sayHalf();
    chat->renameConversation(chat->conversation()->id, u"Mine"_s);
    chat->stop();
    ASSERT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    EXPECT_EQ(saved().title, u"Mine"_s);
}

TEST_F(ChatServicesTest, aDeletedChatOnScreenIsFollowedByANewOne) {
    const Conversation other = onDisk(u"Other"_s);
    chat->openConversation(other.id);
    chat->deleteConversation(other.id);
    EXPECT_FALSE(ChatStore().load(other.id));
    EXPECT_NE(chat->conversation()->id, other.id);
    EXPECT_EQ(chat->conversation()->title, u"New chat"_s);
    EXPECT_EQ(saved(), *chat->conversation());
    EXPECT_EQ(chat->summaries(), QList{summaryOf(saved())});
}

TEST_F(ChatServicesTest, anotherChatIsDeletedWhileATurnRuns) {
    const Conversation other = onDisk(u"Other"_s);
    sayHalf();
    chat->deleteConversation(other.id);
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_FALSE(ChatStore().load(other.id));
    EXPECT_EQ(chat->summaries().size(), 1);
    chat->stop();
}

TEST_F(ChatServicesTest, aChatThatIsDeletedDuringItsTurnStaysDeleted) {
    sayHalf();
    const QUuid id = chat->conversation()->id;
    chat->deleteConversation(id);
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_TRUE(eventually([&] { return engine.openConnections() == 0; }));
    letPass(50);
    EXPECT_FALSE(QFile::exists(chatFile(id)));
    EXPECT_EQ(chat->summaries(), QList{summaryOf(saved())});
}

TEST_F(ChatServicesTest, aChatThatIsDeletedUnseenDuringItsTurnEndsItAndLeavesTheScreen) {
    sayHalf();
    const QUuid id = chat->conversation()->id;
    const Conversation other = onDisk(u"Other"_s);
    chat->openConversation(other.id);
    chat->deleteConversation(id);
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_EQ(*chat->conversation(), other);
    EXPECT_EQ(chat->summaries(), QList{summaryOf(other)});
}

TEST_F(ChatServicesTest, aMachineShortOfMemoryEndsTheReplyAndIsToldOf) {
    const QSignalSpy told(chat.get(), &ChatController::memoryWarningChanged);
    chat->startMemoryWatch();
    sayHalf();
    EXPECT_FALSE(chat->memoryWarning());
    runShortOfMemory();
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_EQ(chat->memoryWarning(), u"Your Mac is running low on memory. Closing other apps will help, or "
                                     "switch to a lighter model."_s);
    ASSERT_TRUE(eventually([&] { return saved().messages.size() == 2; }));
    EXPECT_EQ(saved().messages.last().content, u"half"_s);
    runShortOfMemory();
    EXPECT_EQ(told.count(), 1);
    chat->resetAll();
    EXPECT_FALSE(chat->memoryWarning());
    EXPECT_FALSE(chat->findChild<MemoryPressure *>()) << "nobody watches any more";
}

TEST_F(ChatServicesTest, theWatchOnMemoryIsOne) {
    chat->startMemoryWatch();
    chat->startMemoryWatch();
    EXPECT_EQ(chat->findChildren<MemoryPressure *>().size(), 1);
}

TEST_F(ChatServicesTest, aMachineShortOfMemoryAtRestIsToldOfToo) {
    chat->newChat();
    chat->startMemoryWatch();
    runShortOfMemory();
    EXPECT_TRUE(chat->memoryWarning());
    EXPECT_EQ(saved(), *chat->conversation());
}
