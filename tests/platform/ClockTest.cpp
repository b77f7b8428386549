#include "platform/Clock.h"

#include "support/Await.h"

using namespace std::chrono_literals;

TEST(SystemClock, itIsTheMachinesTimeInUtc) {
    EXPECT_EQ(Clock::system().now().timeSpec(), Qt::UTC);
    EXPECT_LT(std::abs(Clock::system().now().msecsTo(QDateTime::currentDateTimeUtc())), 1000);
}

TEST(SystemClock, aSleepLastsAtLeastAsLongAsItShould) {
    const auto before = Clock::system().elapsed();
    await(Clock::system().sleep(60ms, {}));
    EXPECT_GE(Clock::system().elapsed() - before, 59ms);
}

TEST(SystemClock, aStopEndsASleep) {
    std::stop_source stop;
    bool ended = false;
    const auto run = [](std::stop_token token, bool *flag) -> Task<> {
        co_await Clock::system().sleep(1h, token);
        *flag = true;
    };
    const Task<> task = run(stop.get_token(), &ended);
    letPass(20);
    EXPECT_FALSE(ended);
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return ended; }));
}

TEST(SystemClock, aSleepThatIsStoppedBeforehandIsNone) {
    std::stop_source stop;
    stop.request_stop();
    await(Clock::system().sleep(1h, stop.get_token()));
}
