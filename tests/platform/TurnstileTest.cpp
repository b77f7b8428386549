#include "platform/Turnstile.h"

#include "platform/OwnThread.h"
#include "support/Await.h"

#include <QList>
#include <QThread>

namespace {

/// Goes through, notes it, and stays until `leave` is woken.
Task<> visit(Turnstile &turnstile, QList<int> *log, int name, std::shared_ptr<WaitPoint> leave,
             std::stop_token stop) {
    const Turnstile::Turn turn = co_await turnstile.enter(stop);
    log->append(stop.stop_requested() ? -name : name);
    if (!stop.stop_requested())
        co_await leave->wait();
}

class TurnstileTest : public ::testing::Test {
protected:
    void come(int name, std::stop_token stop = {}) {
        m_leave.append(std::make_shared<WaitPoint>());
        visit(turnstile, &log, name, m_leave.last(), stop);
    }
    void leave(int name) { m_leave.at(name - 1)->wake(); }

    Turnstile turnstile;
    QList<int> log;

private:
    QList<std::shared_ptr<WaitPoint>> m_leave;
};

} // namespace

TEST_F(TurnstileTest, whoComesFirstGoesThroughAtOnceAndTheOthersInTheirOrder) {
    come(1);
    come(2);
    come(3);
    EXPECT_EQ(log, QList<int>{1});
    leave(1);
    EXPECT_TRUE(eventually([&] { return log == QList<int>({1, 2}); }));
    leave(2);
    EXPECT_TRUE(eventually([&] { return log == QList<int>({1, 2, 3}); }));
    leave(3);
    letPass(10);
    come(4);
    EXPECT_EQ(log.last(), 4);
    leave(4);
    letPass(10);
}

TEST_F(TurnstileTest, whoIsStoppedLeavesTheLineAndHoldsNobodyUp) {
    std::stop_source stop;
    come(1);
    come(2, stop.get_token());
    come(3);
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return log == QList<int>({1, -2}); }));
    leave(1);
    EXPECT_TRUE(eventually([&] { return log == QList<int>({1, -2, 3}); }));
    leave(3);
    letPass(10);
}

TEST(OwnThread, givesWhatTheWorkGivesAndRunsElsewhere) {
    OwnThread<QThread *> work([] { return QThread::currentThread(); });
    EXPECT_NE(await(work.result()), QThread::currentThread());
}

TEST(OwnThread, throwsWhatTheWorkThrows) {
    OwnThread<int> work([]() -> int { throw std::runtime_error("no"); });
    EXPECT_THROW(await(work.result()), std::runtime_error);
}

TEST(OwnThread, itsEndWaitsForTheWork) {
    std::atomic<bool> done = false;
    {
        const OwnThread<int> work([&] {
            QThread::msleep(20);
            done = true;
            return 1;
        });
    }
    EXPECT_TRUE(done);
}
