#include "e2e/ProcessStatus.h"
#include "e2e/TopLevelWindow.h"
#include "e2e/WindowFixture.h"

using namespace Qt::StringLiterals;

namespace {

using WindowReply = WindowFixture;

constexpr int returnKey = 0xff0d;

} // namespace

TEST_F(WindowReply, aSuggestionIsAnswered) {
    startProgram();
    ASSERT_TRUE(window().press(suggestion));
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(window().said(u"You"_s), QStringList(suggestion));
    EXPECT_EQ(window().said(u"Ostrelin"_s).size(), 1);
    EXPECT_FALSE(window().shows(suggestion, AccessibleRole::pushButton)) << "the suggestions are gone";
}

TEST_F(WindowReply, whatIsTypedIsSentWithReturn) {
    startProgram();
    ASSERT_TRUE(focusTopLevelWindow(program.pid()));
    ASSERT_TRUE(window().type(u"Hello!"_s));
    ASSERT_TRUE(eventually([this] { return window().text(u"Message Ostrelin"_s) == u"Hello!"_s; }))
        << window().text(u"Message Ostrelin"_s).value_or(u"no field"_s).toStdString();
    ASSERT_TRUE(window().typeKey(returnKey));
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(window().said(u"You"_s), QStringList(u"Hello!"_s));
    EXPECT_EQ(window().text(u"Message Ostrelin"_s), QString());
}

TEST_F(WindowReply, theSendButtonSends) {
    startProgram();
    send(u"Who are you?"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(window().said(u"You"_s), QStringList(u"Who are you?"_s));
}

TEST_F(WindowReply, theStopButtonEndsTheReplyAndTheEngineRests) {
    startProgramEndless();
    const qint64 engine = program.enginePid();
    send(u"Hello!"_s);
    ASSERT_TRUE(window().waitFor(u"Stop generating"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(window().press(u"Stop generating"_s)) << "the reply was over before it could be stopped";
    ASSERT_TRUE(program.waitForReply(1000));
    EXPECT_TRUE(comesToRest(engine, 10'000)) << "the engine goes on with a reply that nobody reads";
    EXPECT_FALSE(window().said(u"Ostrelin"_s).value(0).isEmpty());
}

TEST_F(WindowReply, aReplyIsAskedForAgain) {
    startProgram();
    send(u"Hello!"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    const QUuid first = savedChat().messages.last().id;
    ASSERT_TRUE(window().waitFor(u"Regenerate"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().press(u"Regenerate"_s));
    ASSERT_TRUE(eventually([&] {
        const QList<Message> messages = savedChat().messages;
        return messages.size() == 2 && messages.last().id != first && !messages.last().content.isEmpty();
    }));
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(window().said(u"You"_s), QStringList(u"Hello!"_s));
    EXPECT_EQ(window().said(u"Ostrelin"_s).size(), 1);
}

TEST_F(WindowReply, aChatSentThroughTheWindowIsOnDiskAfterQuitting) {
    startProgram();
    send(u"Hello!"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    const QStringList shown = window().said(u"Ostrelin"_s);
    ASSERT_TRUE(program.closeWindow());
    ASSERT_TRUE(program.waitForEnd());

    const Conversation chat = savedChat();
    ASSERT_EQ(chat.messages.size(), 2);
    EXPECT_EQ(chat.messages.first().role, Role::user);
    EXPECT_EQ(chat.messages.first().content, u"Hello!"_s);
    EXPECT_EQ(chat.messages.last().role, Role::assistant);
    // The bold words are read aloud without their marks.
    EXPECT_EQ(QStringList(QString(chat.messages.last().content).remove(u"**"_s)), shown);
}
