#include "platform/SingleInstance.h"

#include "platform/InstanceSession.h"
#include "support/EnvironmentVariable.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

class SingleInstanceTest : public ::testing::TestWithParam<Desktop> {
protected:
    Session session{GetParam()};
};

const QString token = u"XDG_ACTIVATION_TOKEN"_s;
const QString startupId = u"DESKTOP_STARTUP_ID"_s;

} // namespace

INSTANTIATE_TEST_SUITE_P(Session, SingleInstanceTest, ::testing::Values(Desktop::withBus, Desktop::without),
                         [](const auto &session) {
                             return session.param == Desktop::withBus ? "withABus" : "withoutABus";
                         });

TEST_P(SingleInstanceTest, theSecondEndsAndTheFirstShowsItself) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    const auto second = session.start();
    EXPECT_TRUE(second->endsAsSecond());
    EXPECT_TRUE(first->hears("activated "));
    const auto third = session.start();
    EXPECT_TRUE(third->endsAsSecond());
    EXPECT_TRUE(eventually([&] { return first->lines().count("activated ") == 2; }));
    EXPECT_TRUE(first->isRunning());
}

TEST_P(SingleInstanceTest, theTokenOfTheStartIsHandedOver) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    EXPECT_TRUE(session.start({{token, u"wayland-1"_s}})->endsAsSecond());
    EXPECT_TRUE(first->hears("activated wayland-1"));
    EXPECT_TRUE(session.start({{startupId, u"x11/ä 2_TIME3"_s}})->endsAsSecond());
    EXPECT_TRUE(first->hears("activated x11/ä 2_TIME3"));
    EXPECT_TRUE(session.start({{token, u"both"_s}, {startupId, u"other"_s}})->endsAsSecond());
    EXPECT_TRUE(first->hears("activated both"));
}

TEST_P(SingleInstanceTest, aTokenThatCanBeNoneIsLeftOut) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    EXPECT_TRUE(session.start({{token, QString(5000, u'x')}})->endsAsSecond());
    EXPECT_TRUE(session.start({{token, u"two\nlines"_s}})->endsAsSecond());
    EXPECT_TRUE(eventually([&] { return first->lines().count("activated ") == 2; }));
    EXPECT_EQ(first->lines().size(), 3);
}

TEST_P(SingleInstanceTest, ofTwentyStartsAtOnceOneIsFirst) {
    std::vector<std::unique_ptr<Start>> starts;
    for (int count = 0; count < 20; ++count)
        starts.push_back(session.start());
    const auto count = [&](bool (Start::*is)() const) {
        return std::count_if(starts.begin(), starts.end(),
                             [is](const auto &start) { return (*start.*is)(); });
    };
    EXPECT_TRUE(eventually([&] { return count(&Start::isSecond) == 19; }, 60'000));
    EXPECT_TRUE(eventually([&] { return count(&Start::isFirst) == 1; }, 60'000));
    EXPECT_TRUE(eventually([&] { return count(&Start::isRunning) == 1; }, 60'000));
    const auto first =
        std::find_if(starts.begin(), starts.end(), [](const auto &start) { return start->isFirst(); });
    EXPECT_TRUE(eventually([&] { return (*first)->lines().count("activated ") >= 19; }, 60'000));
}

TEST_P(SingleInstanceTest, aKilledFirstIsSucceededAtOnce) {
    for (int round = 0; round < 5; ++round) {
        const auto first = session.start();
        ASSERT_TRUE(first->becomesFirst()) << "in round " << round;
        first->signal(SIGKILL);
        const auto next = session.start();
        EXPECT_TRUE(next->becomesFirst());
        next->signal(SIGKILL);
        ASSERT_TRUE(eventually([&] { return !next->isRunning(); }));
    }
}

TEST_P(SingleInstanceTest, aFirstThatHangsHoldsTheSecondUpForAWhileOnly) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    first->signal(SIGSTOP);
    const auto second = session.start();
    EXPECT_TRUE(second->endsAsSecond());
    first->signal(SIGCONT);
    EXPECT_TRUE(first->isRunning());
}

TEST_P(SingleInstanceTest, aFirstThatDiesWhileItIsAskedIsSucceeded) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    first->signal(SIGSTOP);
    const auto second = session.start();
    letPass(500);
    EXPECT_TRUE(second->lines().isEmpty());
    first->signal(SIGKILL);
    EXPECT_TRUE(second->becomesFirst());
}

TEST_P(SingleInstanceTest, thePlaceIsGivenUpWithTheObject) {
    const auto first = session.start({{u"GIVE_UP_WHEN_ASKED"_s, u"yes"_s}});
    ASSERT_TRUE(first->becomesFirst());
    EXPECT_TRUE(session.start()->endsAsSecond());
    ASSERT_TRUE(first->hears("given up"));
    EXPECT_TRUE(session.start()->becomesFirst());
    EXPECT_TRUE(first->isRunning());
}

TEST(SingleInstance, withoutABusAndARuntimeFolderEverybodyIsFirst) {
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", "/dev/null/nowhere");
    // What the library takes instead is spoilt too.
    const QTemporaryDir folder;
    const EnvironmentVariable substitute("TMPDIR", folder.path().toUtf8());
    ASSERT_TRUE(
        QFile(folder.filePath("runtime-"_L1 + QString::fromLocal8Bit(::getpwuid(::geteuid())->pw_name)))
            .open(QIODevice::WriteOnly));
    const EnvironmentVariable bus("DBUS_SESSION_BUS_ADDRESS", "");
    SingleInstance one;
    SingleInstance two;
    EXPECT_TRUE(one.claim());
    EXPECT_TRUE(two.claim());
}

TEST(SingleInstance, aBusThatCannotBeReachedIsNone) {
    const Session session(Desktop::without);
    for (const QString &address : {u"unix:path=/nowhere/bus"_s, u"autolaunch:"_s, u"nonsense"_s}) {
        const auto first = session.start({{u"DBUS_SESSION_BUS_ADDRESS"_s, address}});
        ASSERT_TRUE(first->becomesFirst());
        EXPECT_TRUE(session.start({{u"DBUS_SESSION_BUS_ADDRESS"_s, address}})->endsAsSecond());
        EXPECT_TRUE(first->hears("activated "));
    }
}
