#include "platform/ChildProcess.h"

#include "platform/Processes.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"

#include <QDir>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <mutex>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// What a child printed, taken on its thread and read on ours.
struct Printed {
    std::mutex lock;
    QByteArray output;
    QByteArray error;
    std::atomic<bool> exited = false;

    QByteArray all(const QByteArray &which) {
        const std::lock_guard guard(lock);
        return which;
    }
};

std::unique_ptr<ChildProcess>
run(Printed &printed, const QString &script,
    const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) {
    return std::make_unique<ChildProcess>(
        ChildProcess::Launch{.executable = u"/bin/sh"_s,
                             .arguments = {u"-c"_s, script},
                             .environment = environment,
                             .onOutput =
                                 [&](QByteArrayView piece) {
                                     const std::lock_guard guard(printed.lock);
                                     printed.output += piece;
                                 },
                             .onError =
                                 [&](QByteArrayView piece) {
                                     const std::lock_guard guard(printed.lock);
                                     printed.error += piece;
                                 },
                             .onExit = [&] { printed.exited = true; }});
}

bool ends(Printed &printed) {
    return eventually([&] { return printed.exited.load(); });
}

} // namespace

TEST(ChildProcess, bothStreamsAreTakenToTheirEnd) {
    Printed printed;
    const auto child = run(printed, u"echo out; echo err >&2; printf last"_s);
    ASSERT_TRUE(ends(printed));
    EXPECT_EQ(printed.all(printed.output), "out\nlast");
    EXPECT_EQ(printed.all(printed.error), "err\n");
    EXPECT_FALSE(child->isRunning());
}

TEST(ChildProcess, muchOutputBlocksNobody) {
    Printed printed;
    const auto child = run(printed, u"head -c 5000000 /dev/zero; head -c 5000000 /dev/zero >&2"_s);
    ASSERT_TRUE(ends(printed));
    EXPECT_EQ(printed.all(printed.output).size(), 5'000'000);
    EXPECT_EQ(printed.all(printed.error).size(), 5'000'000);
}

TEST(ChildProcess, argumentsAndEnvironmentArriveAsGiven) {
    Printed printed;
    QProcessEnvironment environment;
    environment.insert(u"GREETING"_s, u"Grüße, \"you\""_s);
    const auto child = run(printed, u"echo \"$GREETING|$HOME|$PATH\""_s, environment);
    ASSERT_TRUE(ends(printed));
    EXPECT_TRUE(printed.all(printed.output).startsWith("Grüße, \"you\"||"));
}

TEST(ChildProcess, aProgramThatIsNotThereIsToldInTheSystemsWords) {
    try {
        const ChildProcess child({.executable = u"/nowhere/program"_s,
                                  .arguments = {},
                                  .environment = {},
                                  .onOutput = {},
                                  .onError = {},
                                  .onExit = {}});
        ADD_FAILURE();
    } catch (const LaunchError &error) {
        EXPECT_STREQ(error.what(), "No such file or directory");
    }
}

TEST(ChildProcess, aFileThatIsNoProgramIsToldInTheSystemsWords) {
    const QTemporaryDir folder;
    EXPECT_THROW(ChildProcess({.executable = folder.path(),
                               .arguments = {},
                               .environment = {},
                               .onOutput = {},
                               .onError = {},
                               .onExit = {}}),
                 LaunchError);
}

TEST(ChildProcess, terminateAndKillEndIt) {
    Printed gentle;
    const auto first = run(gentle, u"exec sleep 60"_s);
    EXPECT_TRUE(first->isRunning());
    first->terminate();
    EXPECT_TRUE(ends(gentle));
    Printed hard;
    const auto second = run(hard, u"trap '' TERM; echo set; while :; do sleep 0.1; done"_s);
    ASSERT_TRUE(eventually([&] { return hard.all(hard.output) == "set\n"; }));
    second->terminate();
    letPass(100);
    EXPECT_TRUE(second->isRunning());
    second->kill();
    EXPECT_TRUE(ends(hard));
}

TEST(ChildProcess, signalsAfterTheEndReachNobody) {
    Printed printed;
    const auto child = run(printed, u"true"_s);
    ASSERT_TRUE(ends(printed));
    child->terminate();
    child->kill();
    EXPECT_FALSE(child->isRunning());
}

TEST(ChildProcess, lettingGoOfARunningChildEndsIt) {
    qint64 pid = 0;
    {
        Printed printed;
        const auto child = run(printed, u"exec sleep 60"_s);
        pid = child->processIdentifier();
        EXPECT_FALSE(processPath(pid).isEmpty());
    }
    EXPECT_TRUE(processPath(pid).isEmpty());
}

TEST(ChildProcess, aGrandchildThatKeepsThePipesOpenDoesNotHoldUpTheExit) {
    Printed printed;
    const auto child = run(printed, u"sleep 30 & echo $!"_s);
    ASSERT_TRUE(ends(printed));
    killProcess(printed.all(printed.output).trimmed().toLongLong());
}

TEST(ChildProcess, aGrandchildThatGoesOnPrintingDoesNotHoldUpTheExit) {
    Printed printed;
    const auto child = run(printed, u"yes & echo $! >&2"_s);
    EXPECT_TRUE(ends(printed));
    killProcess(printed.all(printed.error).trimmed().toLongLong());
}

TEST(ChildProcess, itInheritsNoOpenFile) {
    Printed printed;
    const int open = ::open("/dev/null", O_RDONLY);
    const auto child = run(printed, u"ls /proc/self/fd | wc -l"_s);
    ASSERT_TRUE(ends(printed));
    ::close(open);
    // The three standard ones and the folder that ls reads.
    EXPECT_EQ(printed.all(printed.output).trimmed(), "4");
}

TEST(ChildProcess, itStartsWithSignalsAsUsual) {
    std::signal(SIGTERM, SIG_IGN);
    Printed printed;
    const auto child = run(printed, u"exec sleep 60"_s);
    std::signal(SIGTERM, SIG_DFL);
    child->terminate();
    EXPECT_TRUE(ends(printed));
}

TEST(ChildProcess, itDiesWithItsParent) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t parent = ::fork();
    ASSERT_GE(parent, 0);
    if (parent == 0) {
        const ChildProcess child({.executable = u"/bin/sleep"_s,
                                  .arguments = {u"60"_s},
                                  .environment = {},
                                  .onOutput = {},
                                  .onError = {},
                                  .onExit = {}});
        const qint64 pid = child.processIdentifier();
        [[maybe_unused]] const ssize_t written = ::write(ends[1], &pid, sizeof pid);
        ::pause();
        ::_exit(0);
    }
    qint64 grandchild = 0;
    ASSERT_EQ(::read(ends[0], &grandchild, sizeof grandchild), ssize_t(sizeof grandchild));
    EXPECT_FALSE(processPath(grandchild).isEmpty());
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);
    EXPECT_TRUE(eventually([&] { return processPath(grandchild).isEmpty(); }));
}
