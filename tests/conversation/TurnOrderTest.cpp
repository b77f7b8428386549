#include "conversation/TurnFixture.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

/// What becomes of a turn that is stopped, once something else has taken its place.
class TurnOrderTest : public TurnFixture {
protected:
    /// Starts a turn and waits until its reply has begun.
    void beginReply(const QString &question) {
        chat->send(question);
        ASSERT_TRUE(
            eventually([this] { return !last().content.isEmpty() && last().role == Role::assistant; }));
    }

    QStringList contents() const {
        QStringList texts;
        for (const Message &message : messages())
            texts.append(message.content);
        return texts;
    }
};

TEST_F(TurnOrderTest, aTurnThatWasStoppedLeavesTheNextOneAlone) {
    engine.answer(Script().content(u"half"_s).hold());
    engine.answer(Script().content(u"second"_s).hold().content(u" reply"_s).finish(u"stop"_s).done());
    beginReply(u"one"_s);
    chat->stop();
    // No event comes in between: the stopped turn ends while the next one runs.
    chat->send(u"two"_s);
    EXPECT_TRUE(eventually([this] { return last().content == u"second"_s; }));
    EXPECT_TRUE(chat->isGenerating());
    EXPECT_EQ(chat->streamingID(), last().id);
    EXPECT_EQ(contents(), (QStringList{u"one"_s, u"half"_s, u"two"_s, u"second"_s}));
    EXPECT_EQ(saved().messages.last().content, u"two"_s) << "the question isn't lost";
    engine.goOn();
    EXPECT_TRUE(waitForTurn());
    EXPECT_EQ(contents(), (QStringList{u"one"_s, u"half"_s, u"two"_s, u"second reply"_s}));
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(TurnOrderTest, aStoppedTurnOfAnotherChatIsStillSaved) {
    engine.answer(Script().content(u"half"_s).hold());
    engine.answer(Script::reply({u"other"_s}));
    beginReply(u"one"_s);
    const QUuid first = chat->conversation()->id;
    chat->stop();
    chat->newChat();
    say(u"two"_s);
    letPass(20);
    EXPECT_EQ(ChatStore().load(first)->messages.last().content, u"half"_s);
    EXPECT_EQ(contents(), (QStringList{u"two"_s, u"other"_s}));
}

TEST_F(TurnOrderTest, forgettingEveryChatEndsTheTurnWithoutATrace) {
    engine.answer(Script().content(u"half"_s).hold());
    beginReply(u"one"_s);
    chat->setUpgradeBanner(u"A better model."_s);
    QDir(applicationFolder()).removeRecursively();
    ensureFolders();
    chat->resetAll();
    EXPECT_FALSE(chat->isGenerating());
    EXPECT_FALSE(chat->streamingID());
    EXPECT_FALSE(chat->conversation());
    EXPECT_TRUE(chat->summaries().isEmpty());
    EXPECT_FALSE(chat->upgradeBanner());
    EXPECT_TRUE(eventually([this] { return engine.openConnections() == 0; }));
    letPass(20);
    EXPECT_TRUE(QDir(chatsFolder()).isEmpty());
    EXPECT_FALSE(chat->conversation());
}

TEST_F(TurnOrderTest, afterForgettingThereIsANewChatForTheNextQuestion) {
    say(u"one"_s);
    chat->resetAll();
    engine.answer(Script::reply({u"yes"_s}));
    say(u"two"_s);
    EXPECT_EQ(contents().first(), u"two"_s);
}

TEST_F(TurnOrderTest, theBannerTellsOnlyOfChanges) {
    const QSignalSpy changes(chat.get(), &ChatController::upgradeBannerChanged);
    chat->setUpgradeBanner(std::nullopt);
    chat->setUpgradeBanner(u"a"_s);
    chat->setUpgradeBanner(u"a"_s);
    chat->resetAll();
    EXPECT_EQ(changes.count(), 2);
}
