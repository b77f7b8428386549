#include "platform/Channel.h"

#include "support/Await.h"

#include <QCoreApplication>
#include <QThread>

#include <thread>

namespace {

std::shared_ptr<Channel<int>> makeChannel() {
    return std::make_shared<Channel<int>>();
}

Task<> collect(std::shared_ptr<Channel<int>> channel, std::stop_token stop, QList<int> *values, bool *ended) {
    while (true) {
        const std::optional<int> value = co_await channel->next(stop);
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        if (!value)
            break;
        values->append(*value);
    }
    *ended = true;
}

} // namespace

TEST(Channel, valuesComeInOrderAndTheEndAfterThem) {
    const auto channel = makeChannel();
    channel->push(1);
    channel->push(2);
    channel->close();
    EXPECT_EQ(await(channel->next({})), 1);
    EXPECT_EQ(await(channel->next({})), 2);
    EXPECT_EQ(await(channel->next({})), std::nullopt);
    EXPECT_EQ(await(channel->next({})), std::nullopt);
}

TEST(Channel, whatIsPushedAfterTheEndIsIgnored) {
    const auto channel = makeChannel();
    channel->close();
    channel->push(1);
    channel->close(std::make_exception_ptr(std::runtime_error("late")));
    EXPECT_EQ(await(channel->next({})), std::nullopt);
}

TEST(Channel, anErrorComesAfterTheValues) {
    const auto channel = makeChannel();
    channel->push(1);
    channel->close(std::make_exception_ptr(std::runtime_error("broken")));
    EXPECT_EQ(await(channel->next({})), 1);
    EXPECT_THROW(await(channel->next({})), std::runtime_error);
}

TEST(Channel, aWaitingConsumerIsWokenOnTheMainThread) {
    const auto channel = makeChannel();
    QList<int> values;
    bool ended = false;
    const Task<> task = collect(channel, {}, &values, &ended);
    std::thread producer([channel] {
        for (int value = 0; value < 10'000; ++value)
            channel->push(value);
        channel->close();
    });
    EXPECT_TRUE(eventually([&] { return ended; }));
    producer.join();
    ASSERT_EQ(values.size(), 10'000);
    for (int value = 0; value < 10'000; ++value)
        ASSERT_EQ(values.at(value), value);
}

TEST(Channel, aStopWakesTheConsumerButNotInsideTheCall) {
    const auto channel = makeChannel();
    std::stop_source stop;
    QList<int> values;
    bool ended = false;
    const Task<> task = collect(channel, stop.get_token(), &values, &ended);
    stop.request_stop();
    EXPECT_FALSE(ended);
    EXPECT_TRUE(eventually([&] { return ended; }));
}

TEST(Channel, aStopBeatsAValueThatWaits) {
    const auto channel = makeChannel();
    channel->push(1);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(await(channel->next(stop.get_token())), std::nullopt);
}

TEST(Channel, aProducerMayOutliveTheConsumer) {
    std::thread producer;
    {
        const auto channel = makeChannel();
        producer = std::thread([channel] {
            for (int value = 0; value < 1000; ++value)
                channel->push(value);
        });
        EXPECT_TRUE(await(channel->next({})));
    }
    producer.join();
}
