#include "e2e/EngineFixture.h"
#include "e2e/ProcessStatus.h"
#include "engine/EngineLaunch.h"
#include "platform/AtomicFile.h"
#include "platform/LoopbackPort.h"
#include "platform/Processes.h"
#include "records/Folders.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>

#include <iostream>

using namespace Qt::StringLiterals;
using State = EngineStatus::State;

namespace {

/// The machine's time for somebody who can't wait: sleeps are cut to a few milliseconds.
class HastyClock : public Clock {
public:
    QDateTime now() const override { return system().now(); }
    std::chrono::milliseconds elapsed() const override { return system().elapsed(); }
    Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) override {
        return system().sleep(std::min(duration, std::chrono::milliseconds(5)), stop);
    }
};

class EngineStart : public EngineFixture {
protected:
    /// All states that the manager goes through from now on.
    static std::shared_ptr<QList<State>> statesOf(EngineManager &manager) {
        auto states = std::make_shared<QList<State>>();
        QObject::connect(&manager, &EngineManager::statusChanged, &manager,
                         [&manager, states] { states->append(manager.status().state); });
        return states;
    }

    /// "starting", "loading" or not (a small model is read between two questions), "ready".
    static void expectOrdinary(const QList<State> &states) {
        const QList withoutLoading{State::starting, State::ready};
        const QList withLoading{State::starting, State::loading, State::ready};
        EXPECT_TRUE(states == withoutLoading || states == withLoading);
    }

    static QString lastLines(const EngineManager &manager, qsizetype count) {
        const QStringList lines = manager.logs()->snapshot();
        return lines.mid(std::max<qsizetype>(0, lines.size() - count)).join(u'\n');
    }
};

} // namespace

TEST_F(EngineStart, aColdStartLeadsToAFirstToken) {
    QElapsedTimer timer;
    timer.start();
    start();
    const qint64 ready = timer.elapsed();
    chat->send(u"Hello!"_s);
    ASSERT_TRUE(
        eventually([this] { return !messages().last().content.isEmpty() && messages().size() == 2; }));
    const qint64 token = timer.elapsed();
    std::cout << "start to ready " << ready << " ms, to the first token " << token << " ms\n";
    EXPECT_LT(token, 10'000);
    ASSERT_TRUE(eventually([this] { return !chat->isGenerating(); }));
}

TEST_F(EngineStart, aPatientStartSeesOnlyStatesThatLeadToReady) {
    const auto states = statesOf(engine);
    start();
    expectOrdinary(*states);
}

TEST_F(EngineStart, anImpatientStartSeesOnlyStatesThatLeadToReady) {
    HastyClock hasty;
    EngineManager watched(box, hasty);
    const auto states = statesOf(watched);
    await(watched.start(demoModelPath(), 4096, {}));
    expectOrdinary(*states);
    watched.stop();
}

TEST_F(EngineStart, theHealthOfALoadingServerOnlyRises) {
    const quint16 port = freeLoopbackPort().value();
    QProcess server;
    server.start(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"),
                 serverArguments(demoModelPath(), port, u"key"_s, 4096, 0));
    QList<int> seen{-1};
    const bool isUp = eventually(
        [&] {
            const int status = await(healthStatus(port, {}, {}));
            if (status != seen.last())
                seen.append(status);
            return status == 200;
        },
        30'000);
    EXPECT_TRUE(isUp);
    EXPECT_TRUE(seen == (QList{-1, 200}) || seen == (QList{-1, 503, 200})) << "-1 is a refused connection";
    server.terminate();
    EXPECT_TRUE(server.waitForFinished());
}

TEST_F(EngineStart, aServerKilledWhileReadyHasFailedWithItsLastLines) {
    start();
    killProcess(pid());
    ASSERT_TRUE(eventually([this] { return engine.status().state != State::ready; }));
    ASSERT_EQ(engine.status().state, State::failed);
    const QString tail = lastLines(engine, 8);
    EXPECT_FALSE(tail.isEmpty());
    EXPECT_EQ(engine.status().failure, tail);

    say(u"Hello!"_s);
    EXPECT_EQ(messages().last().content, u"Ostrelin couldn't complete that reply."_s);
    start();
    say(u"Hello!"_s);
    EXPECT_NE(messages().last().content, u"Ostrelin couldn't complete that reply."_s);
}

TEST_F(EngineStart, aFileThatIsNoModelIsTriedTwiceAndToldInTheServersWords) {
    const QString garbage = modelsFolder() + u"/garbage.gguf"_s;
    writeAtomically(garbage, "This is no model at all.");
    const auto states = statesOf(engine);
    try {
        await(engine.start(garbage, 4096, {}));
        FAIL() << "it started";
    } catch (const EngineError &error) {
        EXPECT_EQ(error.kind(), EngineError::Kind::exited);
        EXPECT_EQ(error.description(), lastLines(engine, 8));
        EXPECT_TRUE(error.description().contains(u"failed to load model"_s));
    }
    states->removeAll(State::loading);
    EXPECT_EQ(*states, (QList{State::starting, State::stopped, State::starting}));
    EXPECT_EQ(engine.logs()->snapshot().filter(u"exiting"_s).size(), 2);
}

TEST_F(EngineStart, aModelThatIsMissingIsToldInTheServersWords) {
    try {
        await(engine.start(modelsFolder() + u"/missing.gguf"_s, 4096, {}));
        FAIL() << "it started";
    } catch (const EngineError &error) {
        EXPECT_EQ(error.kind(), EngineError::Kind::exited);
        EXPECT_FALSE(error.description().isEmpty());
    }
}

TEST_F(EngineStart, aServerWhosePortIsTakenEndsAndSaysSo) {
    QTcpServer holder;
    ASSERT_TRUE(holder.listen(QHostAddress::LocalHost));
    QProcess server;
    server.start(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"),
                 serverArguments(demoModelPath(), holder.serverPort(), u"key"_s, 4096, 0));
    ASSERT_TRUE(server.waitForFinished());
    EXPECT_EQ(server.exitCode(), 1);
    EXPECT_TRUE(server.readAllStandardError().contains("bind"));
}

TEST_F(EngineStart, eachStartHasANewServerAndTheOldOneIsGone) {
    start();
    const qint64 first = pid();
    start();
    EXPECT_NE(pid(), first);
    EXPECT_FALSE(isAlive(first));
    say(u"Hello!"_s);
    EXPECT_FALSE(messages().last().content.isEmpty());
}
