#include "e2e/ProcessStatus.h"
#include "e2e/WindowFixture.h"
#include "engine/EngineLaunch.h"
#include "platform/AtomicFile.h"
#include "platform/LoopbackPort.h"
#include "records/Folders.h"
#include "support/DemoModel.h"

#include <QElapsedTimer>
#include <QFile>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

class WindowEnd : public WindowFixture {
protected:
    /// The engine is up, and its file names it.
    qint64 startedEngine() {
        const qint64 engine = program.enginePid();
        EXPECT_GT(engine, 0);
        EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
        return engine;
    }

    void expectOrderlyEnd(qint64 engine, int milliseconds = 5000) {
        EXPECT_TRUE(program.waitForEnd(milliseconds)) << "the program runs on";
        EXPECT_TRUE(program.endedOrderly()) << program.output().toStdString();
        EXPECT_FALSE(isAlive(engine)) << "an engine without a program";
        EXPECT_FALSE(QFile::exists(enginePidFile()));
    }
};

/// The signals that ask a program to end.
class WindowEndBySignal : public WindowEnd, public ::testing::WithParamInterface<int> {};

} // namespace

TEST_F(WindowEnd, closingTheWindowEndsProgramAndEngine) {
    startProgram();
    const qint64 engine = startedEngine();
    ASSERT_TRUE(program.closeWindow());
    expectOrderlyEnd(engine);
}

TEST_P(WindowEndBySignal, aSignalEndsProgramAndEngineInOrder) {
    startProgram();
    const qint64 engine = startedEngine();
    program.signal(GetParam());
    expectOrderlyEnd(engine);
}

INSTANTIATE_TEST_SUITE_P(Signals, WindowEndBySignal, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto &value) { return std::string("SIG") + sigabbrev_np(value.param); });

TEST_F(WindowEnd, anEndInTheMiddleOfAReplyIsQuickAndKeepsTheQuestion) {
    startProgramEndless();
    const qint64 engine = startedEngine();
    send(u"Hello!"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(window().shows(u"Stop generating"_s, AccessibleRole::pushButton));
    QElapsedTimer timer;
    timer.start();
    program.signal(SIGTERM);
    expectOrderlyEnd(engine);
    EXPECT_LT(timer.elapsed(), 2000) << "the engine was waited for, as if somebody still read from it";
    const Conversation chat = savedChat();
    ASSERT_FALSE(chat.messages.isEmpty());
    EXPECT_EQ(chat.messages.first().content, u"Hello!"_s);
}

TEST_F(WindowEnd, aProgramThatIsKilledTakesItsEngineAlong) {
    startProgram();
    const qint64 engine = startedEngine();
    program.signal(SIGKILL);
    EXPECT_TRUE(program.waitForEnd());
    EXPECT_TRUE(eventually([&] { return !isAlive(engine); }, 2000));

    // Its file stays behind and names nobody, which is no matter to the next start.
    EXPECT_EQ(readFile(enginePidFile()), QByteArray::number(engine));
    startProgram();
    EXPECT_NE(startedEngine(), engine);
}

TEST_F(WindowEnd, anEngineThatAnEarlierRunLeftBehindIsEnded) {
    QProcess left;
    left.start(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"),
               serverArguments(demoModelPath(), freeLoopbackPort().value(), u"key"_s, 4096, 0));
    ASSERT_TRUE(left.waitForStarted());
    const qint64 old = left.processId();
    writeAtomically(enginePidFile(), QByteArray::number(old) + '\n');
    startProgram();
    EXPECT_FALSE(isAlive(old)) << "two engines run";
    startedEngine();
}

TEST_F(WindowEnd, anInnocentProcessThatHasTheIdOfAnOldEngineIsLeftAlone) {
    QProcess innocent;
    innocent.start(u"sleep"_s, {u"60"_s});
    ASSERT_TRUE(innocent.waitForStarted());
    writeAtomically(enginePidFile(), QByteArray::number(innocent.processId()));
    startProgram();
    startedEngine();
    EXPECT_TRUE(isAlive(innocent.processId()));
    innocent.kill();
    innocent.waitForFinished();
}
