#include "engine/EngineProcessBox.h"

#include "platform/AtomicFile.h"
#include "platform/LoopbackPort.h"
#include "platform/Processes.h"
#include "support/Await.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <thread>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString fakeServer = QStringLiteral(FAKE_SERVER_PATH);

ChildProcess::Launch launchOf(const QString &executable, const QStringList &arguments,
                              const QString &behaviour) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"FAKE_SERVER"_s, behaviour);
    return {.executable = executable,
            .arguments = arguments,
            .environment = environment,
            .onOutput = {},
            .onError = {},
            .onExit = {}};
}

ChildProcess::Launch aServer(const QString &behaviour = u"ready"_s) {
    return launchOf(fakeServer, {u"--port"_s, QString::number(*freeLoopbackPort())}, behaviour);
}

std::shared_ptr<ChildProcess> startServer(const QString &behaviour = u"ready"_s) {
    return std::make_shared<ChildProcess>(aServer(behaviour));
}

class ProcessBox : public ::testing::Test {
protected:
    ProcessBox() { box.setPidFile(pidFile); }

    QTemporaryDir folder;
    QString pidFile = folder.filePath(u"engine.pid"_s);
    EngineProcessBox box;
};

} // namespace

TEST_F(ProcessBox, thePidFileHoldsTheNumberAndNothingElse) {
    box.launch(aServer());
    box.writePidFile();
    const QByteArray text = readFile(pidFile).value();
    EXPECT_EQ(text, QByteArray::number(text.toLongLong()));
    EXPECT_TRUE(processPath(text.toLongLong()).contains(u"llama-server"_s));
    box.terminate();
    EXPECT_FALSE(QFile::exists(pidFile));
}

TEST_F(ProcessBox, aPidFileThatCannotBeWrittenIsIgnored) {
    box.setPidFile(folder.filePath(u"missing/engine.pid"_s));
    box.launch(aServer());
    EXPECT_NO_THROW(box.writePidFile());
    box.terminate();
}

TEST_F(ProcessBox, terminateEndsTheChildAndExpectsIt) {
    box.launch(aServer());
    EXPECT_TRUE(box.isRunning());
    EXPECT_FALSE(box.expectsExit());
    box.terminate();
    EXPECT_FALSE(box.isRunning());
    EXPECT_TRUE(box.expectsExit());
}

TEST_F(ProcessBox, terminateRemovesThePidFileAlsoWithoutAChild) {
    writeAtomically(pidFile, "1");
    box.terminate();
    EXPECT_FALSE(QFile::exists(pidFile));
    EXPECT_TRUE(box.expectsExit());
}

TEST_F(ProcessBox, terminateLeavesTheFileThatNamesTheServerOfAnotherProgram) {
    const auto anothers = startServer();
    for (const bool hasChild : {false, true}) {
        if (hasChild)
            box.launch(aServer());
        const QByteArray text = QByteArray::number(anothers->processIdentifier());
        writeAtomically(pidFile, text);
        box.terminate();
        EXPECT_EQ(readFile(pidFile), text);
        EXPECT_TRUE(anothers->isRunning());
    }
}

TEST_F(ProcessBox, aStubbornChildIsKilledAfterThreeSeconds) {
    box.launch(aServer(u"stubborn"_s));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const auto before = std::chrono::steady_clock::now();
    box.terminate();
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(3));
    EXPECT_TRUE(eventually([&] { return !box.isRunning(); }, 1000));
}

TEST_F(ProcessBox, terminateWorksFromAnotherThreadWhileTheEventLoopStandsStill) {
    box.launch(aServer());
    std::thread other([&] { box.terminate(); });
    other.join();
    EXPECT_FALSE(box.isRunning());
}

TEST_F(ProcessBox, terminateFromManyThreadsAtOnceIsSafe) {
    box.launch(aServer());
    std::vector<std::thread> threads;
    for (int index = 0; index < 8; ++index)
        threads.emplace_back([&] { box.terminate(); });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_FALSE(box.isRunning());
}

TEST_F(ProcessBox, aNewChildIsNotExpectedToExit) {
    box.launch(aServer());
    box.terminate();
    box.launch(aServer());
    EXPECT_FALSE(box.expectsExit());
    EXPECT_TRUE(box.isRunning());
    box.terminate();
}

TEST_F(ProcessBox, aChildThatCannotBeLaunchedLeavesTheBoxUsable) {
    EXPECT_THROW(box.launch(launchOf(u"/nowhere"_s, {}, QString())), LaunchError);
    EXPECT_FALSE(box.isRunning());
    box.launch(aServer());
    EXPECT_TRUE(box.isRunning());
    box.terminate();
}

TEST_F(ProcessBox, aStaleServerIsEndedAndTheFileRemoved) {
    const auto orphan = startServer();
    writeAtomically(pidFile, QByteArray::number(orphan->processIdentifier()) + "\n");
    box.killStaleServer();
    EXPECT_TRUE(eventually([&] { return !orphan->isRunning(); }, 2000));
    EXPECT_FALSE(QFile::exists(pidFile));
}

TEST_F(ProcessBox, aStaleServerIsAskedToEndFirst) {
    const QString told = folder.filePath(u"told"_s);
    const auto orphan = startServer(u"orderly "_s + told);
    ASSERT_TRUE(eventually([&] { return QFile::exists(told); }));
    writeAtomically(pidFile, QByteArray::number(orphan->processIdentifier()));
    box.killStaleServer();
    EXPECT_TRUE(eventually([&] { return !orphan->isRunning(); }, 2000));
    EXPECT_EQ(readFile(told), "asked") << "it had time to end by itself";
}

TEST_F(ProcessBox, aStaleServerThatIgnoresTheFirstSignalIsKilled) {
    const auto orphan = startServer(u"stubborn"_s);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    writeAtomically(pidFile, QByteArray::number(orphan->processIdentifier()));
    box.killStaleServer();
    EXPECT_TRUE(eventually([&] { return !orphan->isRunning(); }, 2000));
}

TEST_F(ProcessBox, aProcessThatIsNoServerIsNeverTouched) {
    const auto sleeper = std::make_shared<ChildProcess>(launchOf(u"/bin/sleep"_s, {u"60"_s}, QString()));
    writeAtomically(pidFile, QByteArray::number(sleeper->processIdentifier()));
    box.killStaleServer();
    letPass(100);
    EXPECT_TRUE(sleeper->isRunning());
    EXPECT_FALSE(QFile::exists(pidFile));
}

TEST_F(ProcessBox, aProcessThatIsGoneIsNoMatter) {
    qint64 pid = 0;
    {
        const auto gone = startServer();
        pid = gone->processIdentifier();
    }
    writeAtomically(pidFile, QByteArray::number(pid));
    box.killStaleServer();
    EXPECT_FALSE(QFile::exists(pidFile));
}

TEST_F(ProcessBox, aFileWithoutANumberIsKept) {
    for (const char *text : {"", " \n", "abc", "12x", "4294967297", "1.5"}) {
        writeAtomically(pidFile, text);
        box.killStaleServer();
        EXPECT_TRUE(QFile::exists(pidFile)) << text;
    }
}

TEST_F(ProcessBox, aFileWithANegativeNumberTouchesNobody) {
    for (const char *text : {"-1", "0"}) {
        writeAtomically(pidFile, text);
        box.killStaleServer();
        EXPECT_FALSE(QFile::exists(pidFile)) << text;
    }
}

TEST_F(ProcessBox, withoutAFileThereIsNothingToDo) {
    EXPECT_NO_THROW(box.killStaleServer());
}
