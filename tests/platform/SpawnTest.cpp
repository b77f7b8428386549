#include "platform/Spawn.h"

#include "platform/WaitPoint.h"
#include "support/Await.h"

#include <QtTest>

namespace {

Task<> waitAndTell(WaitPoint *point, std::stop_token stop, bool *stopped, bool *ended) {
    const std::stop_callback wake(stop, [point] { point->wake(); });
    co_await point->wait();
    *stopped = stop.stop_requested();
    *ended = true;
}

Task<> fail(std::stop_token) {
    throw std::runtime_error("nobody listens");
    co_return;
}

Task<> cancelled(std::stop_token) {
    throw Cancelled();
    co_return;
}

struct Waiter {
    WaitPoint point;
    bool stopped = false;
    bool ended = false;

    TaskHandle start() {
        return spawn([this](std::stop_token stop) { return waitAndTell(&point, stop, &stopped, &ended); });
    }
};

} // namespace

TEST(Spawn, aTaskRunsAtOnceUpToItsFirstWait) {
    Waiter waiter;
    const TaskHandle handle = waiter.start();
    EXPECT_TRUE(handle.isRunning());
    EXPECT_FALSE(waiter.ended);
    waiter.point.wake();
    EXPECT_TRUE(eventually([&] { return waiter.ended; }));
    EXPECT_FALSE(waiter.stopped);
    EXPECT_FALSE(handle.isRunning());
}

TEST(Spawn, lettingGoOfTheHandleStopsTheTask) {
    Waiter waiter;
    {
        const TaskHandle handle = waiter.start();
    }
    EXPECT_TRUE(eventually([&] { return waiter.ended; }));
    EXPECT_TRUE(waiter.stopped);
}

TEST(Spawn, aNewTaskInTheHandleStopsTheOldOne) {
    Waiter first;
    Waiter second;
    TaskHandle handle = first.start();
    handle = second.start();
    EXPECT_TRUE(eventually([&] { return first.ended; }));
    EXPECT_TRUE(first.stopped);
    EXPECT_FALSE(second.ended);
    handle.cancel();
    EXPECT_TRUE(eventually([&] { return second.stopped; }));
    EXPECT_FALSE(handle.isRunning());
}

TEST(Spawn, anErrorThatNobodyHandlesIsReported) {
    QTest::ignoreMessage(QtCriticalMsg, "A task ended with an error that nobody handles: nobody listens");
    const TaskHandle handle = spawn(fail);
    EXPECT_FALSE(handle.isRunning());
}

TEST(Spawn, aCancellationIsAnOrdinaryEnd) {
    const TaskHandle handle = spawn(cancelled);
    EXPECT_FALSE(handle.isRunning());
}

TEST(WaitPoint, aWakeBeforeTheWaitIsNotLost) {
    Waiter waiter;
    waiter.point.wake();
    const TaskHandle handle = waiter.start();
    EXPECT_TRUE(waiter.ended);
}
