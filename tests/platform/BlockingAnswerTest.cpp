#include "platform/BlockingAnswer.h"

#include "support/Await.h"
#include "support/ScriptedEngine.h"

#include <atomic>
#include <thread>

namespace {

HttpRequest get(const ScriptedEngine &server) {
    HttpRequest request;
    request.url = server.url();
    return request;
}

/// Reads to the end.
QByteArray rest(BlockingAnswer &answer) {
    QByteArray all;
    for (auto pieces = answer.more(); !pieces.isEmpty(); pieces = answer.more())
        all += pieces.join();
    return all;
}

QByteArray numbered(qsizetype size) {
    QByteArray bytes;
    for (int number = 0; bytes.size() < size; ++number)
        bytes += QByteArray::number(number) + ' ';
    return bytes;
}

} // namespace

TEST(BlockingAnswer, theStatusComesFirstThenTheBodyThenNothing) {
    ScriptedEngine server;
    server.answer(Script(206).raw("one ").raw("two"));
    BlockingAnswer answer(get(server), {});
    EXPECT_EQ(answer.status(), 206);
    EXPECT_EQ(rest(answer), "one two");
    EXPECT_TRUE(answer.more().isEmpty());
}

TEST(BlockingAnswer, whatHasComeIsGivenBeforeTheErrorThatFollows) {
    ScriptedEngine server;
    server.answer(Script(200).raw("begun").drop());
    BlockingAnswer answer(get(server), {});
    EXPECT_EQ(answer.status(), 200);
    EXPECT_EQ(answer.more().join(), "begun");
    EXPECT_THROW(answer.more(), HttpError);
}

TEST(BlockingAnswer, anAnswerThatNeverBeginsIsAnError) {
    ScriptedEngine server;
    server.answer(Script::hangUp());
    BlockingAnswer answer(get(server), {});
    EXPECT_THROW(answer.status(), HttpError);
}

TEST(BlockingAnswer, aStopEndsAWaitThatHasBegun) {
    ScriptedEngine server;
    server.answer(Script(200).hold());
    std::stop_source stop;
    {
        BlockingAnswer answer(get(server), stop.get_token());
        EXPECT_EQ(answer.status(), 200);
        const std::jthread other([&] { stop.request_stop(); });
        EXPECT_THROW(answer.more(), Cancelled);
    }
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(BlockingAnswer, theEndOfTheReaderClosesTheConnection) {
    ScriptedEngine server;
    server.answer(Script(200).raw("begun").hold());
    {
        BlockingAnswer answer(get(server), {});
        EXPECT_EQ(answer.status(), 200);
    }
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(BlockingAnswer, aReaderThatFallsBehindHoldsTheConnectionAndLosesNothing) {
    const QByteArray body = numbered(20'000'000);
    ScriptedEngine server;
    server.answer(Script(200).raw(body));
    constexpr qsizetype most = 100'000;
    BlockingAnswer answer(get(server), {}, most);
    EXPECT_EQ(answer.status(), 200);
    QByteArray read;
    for (auto pieces = answer.more(); !pieces.isEmpty(); pieces = answer.more()) {
        const QByteArray haul = pieces.join();
        EXPECT_LT(haul.size(), 2 * most);
        read += haul;
        if (read.size() < 2'000'000)
            letPass(1);
    }
    EXPECT_TRUE(read == body);
}

TEST(BlockingAnswer, anAnswerThatIsHeldBackHoldsBackNoOther) {
    ScriptedEngine large;
    large.answer(Script(200).raw(QByteArray(20'000'000, 'x')));
    ScriptedEngine small;
    small.answer(Script(200).raw("small"));
    BlockingAnswer answer(get(large), {}, 1000);
    EXPECT_EQ(answer.status(), 200);
    for (int round = 0; round < 10; ++round)
        EXPECT_EQ(await(fetch(get(small), {})).body, "small");
    EXPECT_EQ(rest(answer).size(), 20'000'000);
}

TEST(BlockingAnswer, theTimeOfAnAnswerThatIsHeldBackDoesNotRunOut) {
    ScriptedEngine server;
    server.answer(Script(200).raw(QByteArray(20'000'000, 'x')));
    HttpRequest request = get(server);
    request.idleTimeout = std::chrono::milliseconds(200);
    BlockingAnswer answer(request, {}, 1000);
    EXPECT_EQ(answer.status(), 200);
    letPass(700);
    EXPECT_EQ(rest(answer).size(), 20'000'000);
}

TEST(BlockingAnswer, theTimeOfASilentServerRunsOut) {
    ScriptedEngine server;
    server.answer(Script(200).raw("begun").hold());
    HttpRequest request = get(server);
    request.idleTimeout = std::chrono::milliseconds(200);
    BlockingAnswer answer(request, {});
    EXPECT_EQ(answer.status(), 200);
    try {
        rest(answer);
        ADD_FAILURE();
    } catch (const HttpError &error) {
        EXPECT_EQ(error.reason(), HttpError::Reason::timedOut);
    }
}
