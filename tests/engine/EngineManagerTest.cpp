#include "engine/EngineManager.h"

#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "platform/Processes.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using State = EngineStatus::State;

namespace {

class Manager : public ::testing::Test {
protected:
    Manager() { box.setPidFile(pidFile); }
    ~Manager() override { box.terminate(); }

    static void behave(const QByteArray &behaviour) { qputenv("FAKE_SERVER", behaviour); }

    void start(std::stop_token stop = {}) { await(engine.start(u"/models/m.gguf"_s, 4096, stop)); }

    QString failure(EngineError::Kind kind) {
        try {
            start();
        } catch (const EngineError &error) {
            EXPECT_EQ(error.kind(), kind);
            return error.description();
        }
        return u"no failure"_s;
    }

    /// Starts on a clock that stands still, moving it on only as long as the start takes.
    static void startOn(ManualClock &standing, EngineManager &manager) {
        const auto run = [](EngineManager *started, bool *flag) -> Task<> {
            co_await started->start(u"/m"_s, 1, {});
            *flag = true;
        };
        bool ready = false;
        const Task<> task = run(&manager, &ready);
        EXPECT_TRUE(eventually([&] {
            if (!ready)
                standing.advance(std::chrono::milliseconds(500));
            return ready;
        }));
    }

    void recordStates() {
        QObject::connect(&engine, &EngineManager::statusChanged, &engine,
                         [this] { states.append(engine.status().state); });
    }

    qint64 pid() const { return readFile(pidFile).value_or("0").toLongLong(); }

    QTemporaryDir folder;
    QString pidFile = folder.filePath(u"engine.pid"_s);
    EnvironmentVariable server{"OSTRELIN_LLAMA_SERVER", FAKE_SERVER_PATH};
    EnvironmentVariable behaviour{"FAKE_SERVER", "ready"};
    ManualClock clock{ManualClock::Sleep::skipped};
    EngineProcessBox box;
    EngineManager engine{box, clock};
    QList<State> states;
};

} // namespace

TEST_F(Manager, itBeginsStopped) {
    EXPECT_EQ(engine.status(), EngineStatus());
    EXPECT_FALSE(engine.baseURL());
    EXPECT_TRUE(engine.apiKey().isEmpty());
}

TEST_F(Manager, aStartGoesThroughStartingToReady) {
    recordStates();
    start();
    EXPECT_EQ(states, (QList{State::starting, State::ready}));
    EXPECT_EQ(engine.baseURL()->host(), u"127.0.0.1"_s);
    EXPECT_FALSE(engine.baseURL()->toString().endsWith(u'/'));
    EXPECT_EQ(engine.apiKey().size(), 64);
    EXPECT_TRUE(processPath(pid()).contains(u"llama-server"_s));
}

TEST_F(Manager, aServerThatReadsItsModelIsLoading) {
    behave("loading 3");
    recordStates();
    start();
    EXPECT_EQ(states, (QList{State::starting, State::loading, State::ready}));
}

TEST_F(Manager, theServerGetsItsArgumentsAndEnvironment) {
    const QString record = folder.filePath(u"record"_s);
    const EnvironmentVariable recording("FAKE_SERVER_RECORD", record.toLocal8Bit());
    const EnvironmentVariable token("HF_TOKEN", "hidden");
    const EnvironmentVariable budget("OSTRELIN_REASONING-BUDGET", "77");
    start();
    const QList<QByteArray> lines = readFile(record)->split('\n');
    EXPECT_EQ(lines.at(0), "-m");
    EXPECT_EQ(lines.at(1), "/models/m.gguf");
    EXPECT_EQ(lines.at(5), QByteArray::number(engine.baseURL()->port()));
    EXPECT_EQ(lines.at(7), engine.apiKey().toLatin1());
    EXPECT_EQ(lines.at(9), "4096");
    EXPECT_EQ(lines.at(17), "77");
    EXPECT_EQ(lines.at(28), "2");
    EXPECT_TRUE(lines.contains("LLAMA_ARG_OFFLINE=1"));
    EXPECT_FALSE(lines.contains("HF_TOKEN=hidden"));
}

TEST_F(Manager, eachStartHasAPortAndAKeyOfItsOwn) {
    start();
    const QString key = engine.apiKey();
    const QUrl url = *engine.baseURL();
    start();
    EXPECT_NE(engine.apiKey(), key);
    EXPECT_NE(*engine.baseURL(), url);
}

TEST_F(Manager, stopEndsTheServerAndKeepsTheKey) {
    start();
    const qint64 child = pid();
    const QString key = engine.apiKey();
    engine.stop();
    EXPECT_EQ(engine.status().state, State::stopped);
    EXPECT_FALSE(engine.baseURL());
    EXPECT_EQ(engine.apiKey(), key);
    EXPECT_TRUE(processPath(child).isEmpty());
    EXPECT_FALSE(QFile::exists(pidFile));
    letPass(50);
    EXPECT_EQ(engine.status().state, State::stopped) << "the exit was expected";
}

TEST_F(Manager, aMissingServerIsToldAtOnce) {
    const EnvironmentVariable none("OSTRELIN_LLAMA_SERVER", "/nowhere/llama-server");
    EXPECT_TRUE(failure(EngineError::Kind::missingBinary)
                    .startsWith(u"The inference engine isn't in the app yet."_s));
    EXPECT_EQ(engine.status().state, State::stopped);
}

TEST_F(Manager, aServerThatDiesWhileLoadingIsTriedTwiceAndTellsItsLastLines) {
    behave("exit no such model");
    recordStates();
    EXPECT_EQ(failure(EngineError::Kind::exited), u"no such model\nno such model"_s);
    EXPECT_EQ(states, (QList{State::starting, State::stopped, State::starting}));
}

TEST_F(Manager, aServerThatDiesOnceIsStartedAgain) {
    behave("exit-once " + folder.filePath(u"flag"_s).toLocal8Bit());
    start();
    EXPECT_EQ(engine.status().state, State::ready);
}

TEST_F(Manager, aProgramThatCannotBeLaunchedIsToldInTheSystemsWords) {
    const QString text = folder.filePath(u"llama-server"_s);
    writeAtomically(text, "#!/nowhere/interpreter\n");
    QFile::setPermissions(text, QFile::ReadOwner | QFile::ExeOwner);
    const EnvironmentVariable broken("OSTRELIN_LLAMA_SERVER", text.toLocal8Bit());
    EXPECT_EQ(failure(EngineError::Kind::exited), u"No such file or directory"_s);
}

TEST_F(Manager, aServerThatNeverGetsReadyTimesOut) {
    const QString count = folder.filePath(u"count"_s);
    const EnvironmentVariable counting("FAKE_SERVER_COUNT", count.toLocal8Bit());
    behave("never");
    EXPECT_EQ(failure(EngineError::Kind::timeout), u"Ostrelin took too long to wake up."_s);
    EXPECT_EQ(engine.status().state, State::starting);
    EXPECT_TRUE(engine.baseURL());
    EXPECT_GE(clock.elapsed(), std::chrono::seconds(240)) << "two attempts of 120 seconds each";
    EXPECT_LE(clock.elapsed(), std::chrono::seconds(242));
    const qint64 answers = QFileInfo(count).size();
    EXPECT_TRUE(answers > 360 && answers <= 482) << "asked twice a second, but for the server's own start";
    EXPECT_NE(pid(), 0);
    EXPECT_TRUE(box.isRunning()) << "the second attempt's; the first one's is gone with the retry's stop";
}

TEST_F(Manager, aStopDuringALoadIsAnExitThatTheRetryFollows) {
    ManualClock standing;
    EngineManager slow(box, standing);
    behave("loading 1000");
    QString failed;
    const auto run = [](EngineManager *manager, QString *text) -> Task<> {
        try {
            co_await manager->start(u"/m"_s, 1, {});
        } catch (const EngineError &error) {
            *text = error.description();
        }
    };
    const Task<> task = run(&slow, &failed);
    ASSERT_TRUE(eventually([&] {
        if (slow.status().state != State::loading)
            standing.advance(std::chrono::milliseconds(500));
        return slow.status().state == State::loading && standing.hasSleepers();
    }));
    const qint64 first = pid();
    slow.stop();
    EXPECT_EQ(slow.status().state, State::stopped);
    behave("ready");
    standing.advance(std::chrono::milliseconds(500));
    ASSERT_TRUE(eventually([&] {
        standing.advance(std::chrono::milliseconds(500));
        return slow.status().state == State::ready;
    }));
    EXPECT_NE(pid(), first);
    EXPECT_TRUE(failed.isEmpty());
    slow.stop();
}

TEST_F(Manager, aCancelledStartEndsItsServer) {
    ManualClock standing;
    EngineManager slow(box, standing);
    behave("loading 1000");
    std::stop_source stop;
    bool cancelled = false;
    const auto run = [](EngineManager *manager, std::stop_token token, bool *flag) -> Task<> {
        try {
            co_await manager->start(u"/m"_s, 1, token);
        } catch (const Cancelled &) {
            *flag = true;
        }
    };
    const Task<> task = run(&slow, stop.get_token(), &cancelled);
    ASSERT_TRUE(eventually([&] {
        standing.advance(std::chrono::milliseconds(500));
        return slow.status().state == State::loading;
    }));
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return cancelled; }));
    EXPECT_FALSE(box.isRunning());
}

TEST_F(Manager, aStartThatIsCancelledAfterItsFirstServerLaunchesNoSecondOne) {
    behave("exit broken");
    std::stop_source stop;
    QObject::connect(&engine, &EngineManager::statusChanged, &engine, [&] {
        if (engine.status().state == State::stopped)
            stop.request_stop();
    });
    recordStates();
    EXPECT_THROW(start(stop.get_token()), Cancelled);
    EXPECT_EQ(states, (QList{State::starting, State::stopped}));
}

TEST_F(Manager, aCancelledStartLeavesTheServerOfTheNextOneAlone) {
    behave("loading 1000");
    ManualClock standing;
    EngineManager manager(box, standing);
    std::stop_source first;
    bool cancelled = false;
    const auto run = [](EngineManager *started, std::stop_token token, bool *flag) -> Task<> {
        try {
            co_await started->start(u"/m"_s, 1, token);
        } catch (const Cancelled &) {
            *flag = true;
        }
    };
    const Task<> task = run(&manager, first.get_token(), &cancelled);
    ASSERT_TRUE(box.isRunning());
    behave("ready");
    first.request_stop();
    bool ended = false;
    const Task<> next = run(&manager, {}, &ended);
    const qint64 second = pid();
    EXPECT_TRUE(eventually([&] {
        standing.advance(std::chrono::milliseconds(500));
        return cancelled && manager.status().state == State::ready;
    }));
    EXPECT_EQ(pid(), second);
    manager.stop();
}

TEST_F(Manager, withoutAPortThereIsNoServerAfterTwoAttempts) {
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    recordStates();
    const rlimit none{0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    bool failed = false;
    const auto run = [](EngineManager *manager, bool *flag) -> Task<> {
        try {
            co_await manager->start(u"/m"_s, 1, {});
        } catch (const EngineError &error) {
            *flag = error.kind() == EngineError::Kind::port;
        }
    };
    const Task<> task = run(&engine, &failed);
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(failed);
    EXPECT_FALSE(box.isRunning());
}

TEST_F(Manager, aServerKilledWhileReadyHasFailedWithItsLastLines) {
    ManualClock standing;
    EngineManager watched(box, standing);
    behave("chatty");
    startOn(standing, watched);
    killProcess(pid());
    ASSERT_TRUE(eventually([&] { return watched.status().state == State::failed; }));
    EXPECT_EQ(watched.status().failure.count(u'\n'), 7) << "the last eight lines";
    letPass(100);
    EXPECT_EQ(watched.status().state, State::failed) << "nothing starts it again";
}

TEST_F(Manager, aServerThatDiesWithoutAWordHasASentence) {
    ManualClock standing;
    EngineManager watched(box, standing);
    startOn(standing, watched);
    killProcess(pid());
    ASSERT_TRUE(eventually([&] { return watched.status().state == State::failed; }));
    EXPECT_EQ(watched.status(), EngineStatus::failed(u"Ostrelin couldn't start."_s));
}

TEST_F(Manager, whatTheServerPrintsCannotBlockIt) {
    ManualClock standing;
    EngineManager watched(box, standing);
    behave("chatty");
    startOn(standing, watched);
    letPass(300);
    const QStringList lines = watched.logs()->snapshot();
    EXPECT_EQ(lines.size(), 500);
    EXPECT_TRUE(std::ranges::all_of(lines, [](const QString &line) { return line == QString(1000, u'x'); }))
        << "half a line of one stream doesn't mix with the other's";
    watched.stop();
    EXPECT_FALSE(box.isRunning());
}

TEST_F(Manager, theMonitorAsksEveryTwoSecondsAndOnlyEverSaysReady) {
    // Ready at once, then refusing for a while, then ready again: none of it is a change.
    const QString count = folder.filePath(u"count"_s);
    const EnvironmentVariable counting("FAKE_SERVER_COUNT", count.toLocal8Bit());
    behave("moody");
    ManualClock standing;
    EngineManager watched(box, standing);
    startOn(standing, watched);
    int changes = 0;
    QObject::connect(&watched, &EngineManager::statusChanged, &watched, [&] { ++changes; });
    const qint64 askedBefore = QFileInfo(count).size();
    for (int round = 1; round <= 4; ++round) {
        ASSERT_TRUE(eventually([&] { return standing.hasSleepers(); }));
        standing.advance(std::chrono::milliseconds(1999));
        letPass(30);
        EXPECT_EQ(QFileInfo(count).size(), askedBefore + round - 1) << "too early";
        standing.advance(std::chrono::milliseconds(1));
        EXPECT_TRUE(eventually([&] { return QFileInfo(count).size() == askedBefore + round; }));
    }
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(watched.status().state, State::ready);
    watched.stop();
}

TEST_F(Manager, aGivenServerIsUsedAsItIs) {
    const EnvironmentVariable url("OSTRELIN_ENGINE_URL", "http://127.0.0.1:4711");
    const EnvironmentVariable key("OSTRELIN_API_KEY", "given");
    const EnvironmentVariable none("OSTRELIN_LLAMA_SERVER", "/nowhere");
    start();
    EXPECT_EQ(engine.status().state, State::ready);
    EXPECT_EQ(engine.baseURL(), QUrl(u"http://127.0.0.1:4711"_s));
    EXPECT_EQ(engine.apiKey(), u"given"_s);
    EXPECT_FALSE(box.isRunning());
}

TEST_F(Manager, aGivenServerWithoutAKeyHasAnEmptyOne) {
    start();
    const EnvironmentVariable url("OSTRELIN_ENGINE_URL", "http://127.0.0.1:4711");
    start();
    EXPECT_TRUE(engine.apiKey().isEmpty());
}

TEST_F(Manager, anAddressThatIsNoneCountsAsAbsent) {
    for (const char *address : {"", "http://["}) {
        const EnvironmentVariable url("OSTRELIN_ENGINE_URL", address);
        start();
        EXPECT_TRUE(box.isRunning()) << address;
    }
}

TEST_F(Manager, anExitAfterTheManagerIsGoneIsNoMatter) {
    {
        EngineManager brief(box, clock);
        await(brief.start(u"/m"_s, 1, {}));
    }
    killProcess(pid());
    EXPECT_TRUE(eventually([&] { return !box.isRunning(); }));
    letPass(20);
}
