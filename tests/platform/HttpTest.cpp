#include "platform/Http.h"

#include "support/Await.h"
#include "support/ScriptedEngine.h"

#include <QProcess>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

HttpRequest get(const ScriptedEngine &server) {
    HttpRequest request;
    request.url = server.url();
    return request;
}

} // namespace

TEST(Fetch, theAnswerIsStatusAndBody) {
    ScriptedEngine server;
    server.answer(Script(201).raw("one ").raw("two"));
    const HttpResponse response = await(fetch(get(server), {}));
    EXPECT_EQ(response.status, 201);
    EXPECT_EQ(response.body, "one two");
}

TEST(Fetch, theBodyOfARefusalIsNotRead) {
    for (const int status : {300, 404, 500}) {
        ScriptedEngine server;
        server.answer(Script(status).raw("detail").hold());
        const HttpResponse response = await(fetch(get(server), {}));
        EXPECT_EQ(response.status, status);
        EXPECT_TRUE(response.body.isEmpty());
    }
}

TEST(Fetch, aBodyWithoutAnEndIsAFailureBeforeItFillsTheMemory) {
    ScriptedEngine server;
    server.answer(Script(200).repeat(QByteArray(100'000, 'x')));
    HttpRequest request = get(server);
    request.longestBody = 1'000'000;
    try {
        await(fetch(request, {}));
        ADD_FAILURE();
    } catch (const HttpError &error) {
        EXPECT_EQ(error.reason(), HttpError::Reason::tooLong);
    }
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(FetchStatus, theBodyIsNotWaitedFor) {
    for (const int status : {200, 404, 503}) {
        ScriptedEngine server;
        server.answer(Script(status).raw("begun").hold());
        EXPECT_EQ(await(fetchStatus(get(server), {})), status);
        EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
    }
}

TEST(Fetch, methodHeadersAndBodyAreSentAsGiven) {
    ScriptedEngine server;
    server.answer(Script(200));
    HttpRequest request = get(server);
    request.method = "POST";
    request.headers.emplaceBack("X-Kind", "test");
    request.body = "payload";
    await(fetch(request, {}));
    ASSERT_EQ(server.requests().size(), 1);
    EXPECT_EQ(server.requests().first().line, "POST / HTTP/1.1");
    EXPECT_EQ(server.requests().first().headers.value("x-kind"), "test");
    EXPECT_EQ(server.requests().first().body, "payload");
}

TEST(Fetch, aStopIsACancellationAndClosesTheConnection) {
    ScriptedEngine server;
    server.answer(Script(200).raw("a").hold());
    std::stop_source stop;
    bool cancelled = false;
    const auto run = [](HttpRequest request, std::stop_token token, bool *flag) -> Task<> {
        try {
            co_await fetch(request, token);
        } catch (const Cancelled &) {
            *flag = true;
        }
    };
    const Task<> task = run(get(server), stop.get_token(), &cancelled);
    ASSERT_TRUE(eventually([&] { return server.openConnections() == 1; }));
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return cancelled && server.openConnections() == 0; }));
}

TEST(Fetch, noProgramThatIsStartedMeanwhileHoldsTheConnectionOpen) {
    ScriptedEngine server;
    server.answer(Script(200).raw("a").hold());
    std::stop_source stop;
    Task<HttpResponse> task = fetch(get(server), stop.get_token());
    EXPECT_TRUE(eventually([&] { return server.requests().size() == 1; }));
    qint64 other = 0;
    ASSERT_TRUE(QProcess::startDetached(u"sleep"_s, {u"60"_s}, {}, &other));
    stop.request_stop();
    EXPECT_THROW(await(std::move(task)), Cancelled);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
    EXPECT_EQ(::kill(static_cast<pid_t>(other), SIGKILL), 0) << "it has been there all the while";
}

TEST(Fetch, aCutAnswerIsAFailure) {
    ScriptedEngine server;
    server.answer(Script(200).raw("a").pause(20).drop());
    EXPECT_THROW(await(fetch(get(server), {})), HttpError);
    EXPECT_EQ(server.requests().size(), 1) << "asked once";
}

TEST(Fetch, anAddressThatIsNoneIsAFailure) {
    HttpRequest request;
    request.url = QUrl(u"nonsense:"_s);
    EXPECT_THROW(await(fetch(request, {})), HttpError);
    request.url = QUrl();
    EXPECT_THROW(await(fetch(request, {})), HttpError);
}

TEST(Fetch, aSilentServerTimesOut) {
    ScriptedEngine server;
    server.answer(Script::silence());
    HttpRequest request = get(server);
    request.idleTimeout = std::chrono::milliseconds(150);
    try {
        await(fetch(request, {}));
        ADD_FAILURE();
    } catch (const HttpError &error) {
        EXPECT_EQ(error.reason(), HttpError::Reason::timedOut);
        EXPECT_STREQ(error.what(), "The request timed out.");
    }
}

TEST(Fetch, manyAtOnceAreAnsweredEach) {
    ScriptedEngine server;
    server.answer(Script(200).raw("same"));
    QList<std::shared_ptr<bool>> done;
    const auto run = [](HttpRequest request, std::shared_ptr<bool> flag) -> Task<> {
        const HttpResponse response = co_await fetch(request, {});
        *flag = response.body == "same";
    };
    for (int index = 0; index < 40; ++index) {
        done.append(std::make_shared<bool>(false));
        run(get(server), done.last());
    }
    EXPECT_TRUE(eventually(
        [&] { return std::all_of(done.begin(), done.end(), [](const auto &flag) { return *flag; }); }));
}
