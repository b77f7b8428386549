#include "e2e/ProcessStatus.h"
#include "e2e/WindowFixture.h"
#include "records/Settings.h"

using namespace Qt::StringLiterals;

namespace {

using WindowComposer = WindowFixture;

} // namespace

TEST_F(WindowComposer, theSpeedChipChangesTheSettings) {
    startProgram();
    for (const auto speed : {ResponseSpeed::calm, ResponseSpeed::slowYourRoll, ResponseSpeed::full}) {
        ASSERT_TRUE(window().press(u"Response speed"_s));
        EXPECT_TRUE(eventually([speed] { return loadSettings().responseSpeed == speed; }));
    }
}

TEST_F(WindowComposer, aStopDuringARestKeepsWhatWasSaid) {
    startProgramEndless();
    const qint64 engine = program.enginePid();
    ASSERT_TRUE(window().press(u"Response speed"_s));
    ASSERT_TRUE(window().press(u"Response speed"_s));
    ASSERT_TRUE(eventually([] { return loadSettings().responseSpeed == ResponseSpeed::slowYourRoll; }));
    send(u"Hello!"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(comesToRest(engine, 4000)) << "the engine goes on during a rest of five seconds";
    ASSERT_TRUE(window().press(u"Stop generating"_s)) << "a rest is no end";
    ASSERT_TRUE(program.waitForReply(1000));
    const QStringList shown = window().said(u"Ostrelin"_s);
    ASSERT_TRUE(program.closeWindow());
    ASSERT_TRUE(program.waitForEnd());

    const Conversation chat = savedChat();
    ASSERT_EQ(chat.messages.size(), 2);
    EXPECT_FALSE(chat.messages.last().content.isEmpty());
    EXPECT_EQ(QStringList(chat.messages.last().content), shown);
}
