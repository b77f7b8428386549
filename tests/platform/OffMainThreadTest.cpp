#include "platform/OffMainThread.h"

#include "support/Await.h"

#include <future>

namespace {

Task<> note(Task<int> task, std::shared_ptr<QByteArray> end) {
    try {
        co_await task;
        *end = "ended";
    } catch (const Cancelled &) {
        *end = "cancelled";
    }
}

} // namespace

TEST(OffMainThread, theWorkIsDoneOnAnotherThreadAndItsValueComesBack) {
    const std::thread::id here = std::this_thread::get_id();
    const auto where = await(offMainThread<std::thread::id>([] { return std::this_thread::get_id(); }, {}));
    EXPECT_NE(where, here);
    const auto resumed = []() -> Task<std::thread::id> {
        co_await offMainThread<int>([] { return 1; }, {});
        co_return std::this_thread::get_id();
    };
    EXPECT_EQ(await(resumed()), here);
}

TEST(OffMainThread, whatTheWorkThrowsComesBack) {
    EXPECT_THROW(await(offMainThread<int>([]() -> int { throw std::out_of_range("far"); }, {})),
                 std::out_of_range);
}

TEST(OffMainThread, aStopIsHeardAtOnceWhileTheWorkIsAtIt) {
    const auto gate = std::make_shared<std::promise<void>>();
    const auto hasLeft = std::make_shared<std::promise<void>>();
    std::stop_source stop;
    const auto end = std::make_shared<QByteArray>();
    const auto work = [gate, hasLeft] {
        gate->get_future().wait();
        hasLeft->set_value();
        return 1;
    };
    const Task<> task = note(offMainThread<int>(work, stop.get_token()), end);
    letPass(20);
    EXPECT_EQ(*end, "");
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return *end == "cancelled"; }));
    gate->set_value();
    hasLeft->get_future().wait();
}

TEST(OffMainThread, aStopBeforeTheStartIsACancellation) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(await(offMainThread<int>([] { return 1; }, stop.get_token())), Cancelled);
}

TEST(OffMainThread, noWorkWaitsForAnother) {
    const auto gate = std::make_shared<std::promise<void>>();
    const std::shared_future<void> opened(gate->get_future());
    const auto end = std::make_shared<QByteArray>();
    const Task<> task = note(offMainThread<int>(
                                 [opened] {
                                     opened.wait();
                                     return 1;
                                 },
                                 {}),
                             end);
    EXPECT_EQ(await(offMainThread<int>([] { return 2; }, {})), 2);
    EXPECT_EQ(*end, "");
    gate->set_value();
    EXPECT_TRUE(eventually([&] { return *end == "ended"; }));
}
