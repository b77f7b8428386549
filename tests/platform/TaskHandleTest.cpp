#include "platform/TaskHandle.h"

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

    void start(TaskHandle &handle) {
        handle.start([this](std::stop_token stop) { return waitAndTell(&point, stop, &stopped, &ended); });
    }
};

} // namespace

TEST(TaskHandle, aTaskRunsAtOnceUpToItsFirstWait) {
    Waiter waiter;
    TaskHandle handle;
    waiter.start(handle);
    EXPECT_TRUE(handle.isRunning());
    EXPECT_FALSE(waiter.ended);
    waiter.point.wake();
    EXPECT_TRUE(eventually([&] { return waiter.ended; }));
    EXPECT_FALSE(waiter.stopped);
    EXPECT_FALSE(handle.isRunning());
}

TEST(TaskHandle, lettingGoOfTheHandleStopsTheTask) {
    Waiter waiter;
    {
        TaskHandle handle;
        waiter.start(handle);
    }
    EXPECT_TRUE(eventually([&] { return waiter.ended; }));
    EXPECT_TRUE(waiter.stopped);
}

TEST(TaskHandle, aNewTaskInTheHandleStopsTheOldOne) {
    Waiter first;
    Waiter second;
    TaskHandle handle;
    first.start(handle);
    second.start(handle);
    EXPECT_TRUE(eventually([&] { return first.ended; }));
    EXPECT_TRUE(first.stopped);
    EXPECT_FALSE(second.ended);
    handle.cancel();
    EXPECT_TRUE(eventually([&] { return second.stopped; }));
    EXPECT_FALSE(handle.isRunning());
}

TEST(TaskHandle, anErrorThatNobodyHandlesIsReported) {
    QTest::ignoreMessage(QtCriticalMsg, "A task ended with an error that nobody handles: nobody listens");
    TaskHandle handle;
    handle.start(fail);
    EXPECT_FALSE(handle.isRunning());
}

TEST(TaskHandle, aCancellationIsAnOrdinaryEnd) {
    TaskHandle handle;
    handle.start(cancelled);
    EXPECT_FALSE(handle.isRunning());
}

TEST(TaskHandle, aTaskCanBeCancelledFromInsideItsFirstStep) {
    TaskHandle handle;
    bool stopped = false;
    handle.start([&](std::stop_token stop) {
        handle.cancel();
        stopped = stop.stop_requested();
        return cancelled(stop);
    });
    EXPECT_TRUE(stopped);
}

TEST(WaitPoint, aWakeBeforeTheWaitIsNotLost) {
    Waiter waiter;
    waiter.point.wake();
    TaskHandle handle;
    waiter.start(handle);
    EXPECT_TRUE(waiter.ended);
}
