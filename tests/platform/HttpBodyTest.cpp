#include "platform/Http.h"
#include "support/Await.h"
#include "support/ScriptedEngine.h"

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

// Which bodies are read, how far, and how they come.

namespace {

HttpRequest get(const ScriptedEngine &server) {
    HttpRequest request;
    request.url = server.url();
    return request;
}

HttpRequest cutting(const ScriptedEngine &server, qsizetype longest) {
    HttpRequest request = get(server);
    request.longestBody = longest;
    request.longBody = HttpRequest::LongBody::isCut;
    return request;
}

HttpRequest decompressing(const ScriptedEngine &server) {
    HttpRequest request = get(server);
    request.compression = HttpRequest::Compression::isAccepted;
    return request;
}

HttpError::Reason failureOf(const HttpRequest &request) {
    try {
        await(fetch(request, {}));
    } catch (const HttpError &error) {
        return error.reason();
    }
    ADD_FAILURE() << "no failure";
    return HttpError::Reason::other;
}

/// The bytes as zlib has them (RFC 1950), which is what HTTP calls "deflate".
QByteArray deflated(const QByteArray &bytes) {
    constexpr int lengthPrefix = 4;
    return qCompress(bytes, 9).sliced(lengthPrefix);
}

} // namespace

TEST(FetchedBody, ofARefusalIsReadIfTheRequestWantsIt) {
    for (const int status : {200, 202, 300, 404, 500}) {
        ScriptedEngine server;
        server.answer(Script(status).raw("detail"));
        HttpRequest request = get(server);
        request.reading = HttpRequest::Reading::ofEveryStatus;
        const HttpResponse response = await(fetch(request, {}));
        EXPECT_EQ(response.status, status);
        EXPECT_EQ(response.body, "detail");
    }
}

TEST(FetchedBody, thatHasNoEndIsCutAndItsConnectionClosed) {
    ScriptedEngine server;
    server.answer(Script(200).repeat(QByteArray(700, 'x')));
    EXPECT_EQ(await(fetch(cutting(server, 100'000), {})).body, QByteArray(100'000, 'x'));
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(FetchedBody, isNotWaitedForBeyondItsLimit) {
    ScriptedEngine server;
    server.answer(Script(200).raw("12345").hold());
    EXPECT_EQ(await(fetch(cutting(server, 5), {})).body, "12345");
}

TEST(FetchedBody, belowItsLimitIsWhole) {
    ScriptedEngine server;
    server.answer(Script(200).raw("12").raw("34"));
    EXPECT_EQ(await(fetch(cutting(server, 5), {})).body, "1234");
}

TEST(FetchedBody, thatIsJustAsLongAsItMayBeIsNoFailure) {
    ScriptedEngine server;
    server.answer(Script(200).raw("123").raw("45"));
    HttpRequest request = get(server);
    request.longestBody = 5;
    EXPECT_EQ(await(fetch(request, {})).body, "12345");
    request.longestBody = 4;
    EXPECT_EQ(failureOf(request), HttpError::Reason::tooLong);
}

TEST(FetchedBody, thatBreaksOffBeforeItsLimitIsAFailure) {
    ScriptedEngine server;
    server.answer(Script(200).raw("123").pause(20).drop());
    EXPECT_EQ(failureOf(cutting(server, 5)), HttpError::Reason::lost);
}

TEST(FetchedBody, withLinesBehindItWithoutEndIsAFailure) {
    ScriptedEngine server;
    server.answer(Script::plain(200)
                      .header("Transfer-Encoding", "chunked")
                      .raw("4\r\nbody\r\n0\r\n")
                      .repeat(QByteArray("X-More: x\r\n").repeated(2'000)));
    EXPECT_EQ(failureOf(get(server)), HttpError::Reason::tooLong);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(FetchedBody, inPiecesOfAByteIsNotCountedWithTheirFrames) {
    ScriptedEngine server;
    constexpr int bytes = 400'000;
    server.answer(Script::plain(200)
                      .header("Transfer-Encoding", "chunked")
                      .raw(QByteArray("1\r\na\r\n").repeated(bytes) + "0\r\n\r\n"));
    EXPECT_EQ(await(fetch(get(server), {})).body, QByteArray(bytes, 'a'));
}

TEST(Compression, isNeitherAskedForNorUndoneByItself) {
    ScriptedEngine server;
    server.answer(Script(200).header("Content-Encoding", "deflate").raw(deflated("plain")));
    EXPECT_EQ(await(fetch(get(server), {})).body, deflated("plain"));
    EXPECT_FALSE(server.requests().first().headers.contains("accept-encoding"));
}

TEST(Compression, isUndoneWhereItIsAccepted) {
    ScriptedEngine server;
    server.answer(Script(200).header("Content-Encoding", "deflate").raw(deflated("plain")));
    EXPECT_EQ(await(fetch(decompressing(server), {})).body, "plain");
    EXPECT_TRUE(server.requests().first().headers.value("accept-encoding").contains("gzip"));
    server.answer(Script(200).raw("as it is"));
    EXPECT_EQ(await(fetch(decompressing(server), {})).body, "as it is");
}

TEST(Compression, ofMuchIntoLittleIsMeasuredByWhatItWas) {
    const QByteArray twice = deflated(deflated(QByteArray(100'000'000, '0')));
    ASSERT_LT(twice.size(), 5'000);
    ScriptedEngine server;
    server.answer(Script(200).header("Content-Encoding", "deflate, deflate").raw(twice).hold());
    HttpRequest request = decompressing(server);
    request.longestBody = 2'000'000;
    EXPECT_EQ(failureOf(request), HttpError::Reason::tooLong);
    request.longBody = HttpRequest::LongBody::isCut;
    EXPECT_EQ(await(fetch(request, {})).body, QByteArray(2'000'000, '0'));
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(Compression, ofNothingWithoutEndIsAFailure) {
    // What begins a stream as zlib has it, and a block of no bytes (RFC 1951, 3.2.4).
    const QByteArray beginning("\x78\x01");
    const QByteArray emptyBlock("\0\0\0\xFF\xFF", 5);
    ScriptedEngine server;
    server.answer(
        Script(200).header("Content-Encoding", "deflate").raw(beginning).repeat(emptyBlock.repeated(4'000)));
    HttpRequest request = decompressing(server);
    EXPECT_EQ(failureOf(request), HttpError::Reason::tooLong);
    request.longBody = HttpRequest::LongBody::isCut;
    EXPECT_EQ(failureOf(request), HttpError::Reason::tooLong);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST(Compression, thatMakesABodyLongerIsUndoneToo) {
    QByteArray noise(2'000'000, '\0');
    std::mt19937 random;
    std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random()); });
    ScriptedEngine server;
    server.answer(Script(200).header("Content-Encoding", "deflate").raw(deflated(noise)));
    EXPECT_TRUE(await(fetch(decompressing(server), {})).body == noise);
}

TEST(Compression, thatIsBrokenOrUnknownIsAFailure) {
    for (const char *way : {"deflate", "gzip", "br", "something"}) {
        ScriptedEngine server;
        server.answer(Script(200).header("Content-Encoding", way).raw("\x1Fnothing of the kind"));
        EXPECT_EQ(failureOf(decompressing(server)), HttpError::Reason::badAnswer) << way;
    }
}
