#include "platform/BlockingAnswer.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

using namespace Qt::StringLiterals;

// Answers that send the reader elsewhere, and the ways there.

namespace {

HttpRequest following(const QUrl &url) {
    HttpRequest request;
    request.url = url;
    request.redirects = HttpRequest::Redirects::areFollowed;
    return request;
}

Script redirect(const QUrl &target, int status = 302) {
    return Script(status).header("Location", target.toEncoded()).raw("not here");
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

QUrl at(const ScriptedEngine &server, const QString &path) {
    return server.url().resolved(QUrl(path));
}

} // namespace

TEST(Redirects, aLineOfBlanksDoesNotEndTheHead) {
    ScriptedEngine last;
    last.answer(Script(200).raw("here"));
    ScriptedEngine first;
    first.answer(Script(302).header("X-Folded", "a\r\n \t ").header("Location", last.url().toEncoded()));
    EXPECT_EQ(await(fetch(following(first.url()), {})).body, "here");
}

TEST(Redirects, areAnswersUnlessTheRequestSaysOtherwise) {
    ScriptedEngine server;
    server.answer(redirect(at(server, u"/there"_s)));
    HttpRequest request;
    request.url = server.url();
    EXPECT_EQ(await(fetchStatus(request, {})), 302);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(Redirects, ofEveryKindAreFollowedAndOnlyTheLastHeadIsTold) {
    for (const int status : {301, 302, 303, 307, 308}) {
        ScriptedEngine last;
        last.answer(Script(203).raw("here"));
        ScriptedEngine first;
        first.answer(redirect(at(last, u"/there"_s), status));
        const HttpResponse response = await(fetch(following(first.url()), {}));
        EXPECT_EQ(response.status, 203) << status;
        EXPECT_EQ(response.body, "here");
        EXPECT_EQ(last.requests().first().line, "GET /there HTTP/1.1");
    }
}

TEST(Redirects, takeTheHeadersOfTheRequestAlong) {
    ScriptedEngine last;
    last.answer(Script(200));
    ScriptedEngine first;
    first.answer(redirect(at(last, u"/"_s)));
    HttpRequest request = following(first.url());
    request.headers.emplaceBack("Range", "bytes=7-");
    request.headers.emplaceBack("User-Agent", "tester");
    await(fetch(request, {}));
    EXPECT_EQ(last.requests().first().headers.value("range"), "bytes=7-");
    EXPECT_EQ(last.requests().first().headers.value("user-agent"), "tester");
}

TEST(Redirects, turnAPostIntoAGetUnlessTheySayThatItStays) {
    for (const int status : {301, 302, 303, 307, 308}) {
        const bool stays = status >= 307;
        ScriptedEngine last;
        last.answer(Script(200).raw("here"));
        ScriptedEngine first;
        first.answer(redirect(last.url(), status));
        HttpRequest request = following(first.url());
        request.method = "POST";
        request.body = "q=1";
        EXPECT_EQ(await(fetch(request, {})).body, "here");
        EXPECT_EQ(first.requests().first().line, "POST / HTTP/1.1");
        EXPECT_EQ(last.requests().first().line, stays ? "POST / HTTP/1.1" : "GET / HTTP/1.1") << status;
        EXPECT_EQ(last.requests().first().body, stays ? "q=1" : "") << status;
    }
}

TEST(Redirects, thatCarryANameAndAPasswordDoNotHaveThemSent) {
    ScriptedEngine server;
    QUrl target = at(server, u"/there"_s);
    target.setUserInfo(u"name:password"_s);
    server.answer(redirect(target));
    server.answer(Script(401).header("WWW-Authenticate", "Basic realm=\"here\""));
    EXPECT_EQ(await(fetchStatus(following(server.url()), {})), 401);
    ASSERT_EQ(server.requests().size(), 2);
    for (const char *header : {"authorization", "referer", "cookie"})
        EXPECT_FALSE(server.requests().last().headers.contains(header)) << header;
}

TEST(Redirects, thatSetACookieDoNotGetItBack) {
    ScriptedEngine server;
    server.answer(Script(302).header("Set-Cookie", "a=b").header("Location", "/there"));
    server.answer(Script(200));
    EXPECT_EQ(await(fetchStatus(following(server.url()), {})), 200);
    EXPECT_FALSE(server.requests().last().headers.contains("cookie"));
}

TEST(Redirects, toAPathStayOnTheServer) {
    ScriptedEngine server;
    server.answer(Script(302).header("Location", "/there"));
    server.answer(Script(200).raw("here"));
    EXPECT_EQ(await(fetch(following(server.url()), {})).body, "here");
    EXPECT_EQ(server.requests().last().line, "GET /there HTTP/1.1");
}

TEST(Redirects, thatNameNoPlaceAreAnswers) {
    for (const int status : {300, 302, 304}) {
        ScriptedEngine server;
        server.answer(Script(status));
        EXPECT_EQ(await(fetchStatus(following(server.url()), {})), status);
        server.answer(Script(status).header("Location", " \t "));
        EXPECT_EQ(await(fetchStatus(following(server.url()), {})), status) << "a place of blanks";
    }
}

TEST(Redirects, thatNameNoPlaceAreToldToWhoWaitsForThem) {
    ScriptedEngine server;
    server.answer(Script(302).header("Location", " ").raw("not here").hold());
    BlockingAnswer answer(following(server.url()), {});
    EXPECT_EQ(answer.status(), 302);
}

TEST(Redirects, withABodyWithoutAnEndAreAFailure) {
    ScriptedEngine last;
    last.answer(Script(200).raw("here"));
    ScriptedEngine first;
    first.answer(redirect(last.url()).repeat(QByteArray(20'000, 'x')));
    EXPECT_EQ(failureOf(following(first.url())), HttpError::Reason::tooLong);
    EXPECT_TRUE(eventually([&] { return first.openConnections() == 0; }));
    EXPECT_TRUE(last.requests().isEmpty());
}

TEST(Redirects, mayAllHaveABody) {
    ScriptedEngine last;
    last.answer(Script(200).raw(QByteArray(2'000'000, 'x')));
    ScriptedEngine first;
    first.answer(Script(302).header("Location", "/on").raw(QByteArray(400'000, 'x')));
    first.answer(redirect(last.url()).raw(QByteArray(400'000, 'x')));
    EXPECT_EQ(await(fetch(following(first.url()), {})).body.size(), 2'000'000);
}

TEST(Redirects, withLargeBodiesInARowAreAFailure) {
    ScriptedEngine server;
    server.answer(Script(302).header("Location", "/on").raw(QByteArray(400'000, 'x')));
    EXPECT_EQ(failureOf(following(server.url())), HttpError::Reason::tooLong);
    EXPECT_LE(server.requests().size(), 3);
}

TEST(Redirects, aPlaceInAnAnswerThatIsNoRedirectIsNotFollowed) {
    ScriptedEngine server;
    server.answer(Script(201).header("Location", "/there").raw("made"));
    EXPECT_EQ(await(fetch(following(server.url()), {})).body, "made");
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(Redirects, endAfterTwenty) {
    ScriptedEngine server;
    server.answer(Script(302).header("Location", "/on"));
    EXPECT_EQ(failureOf(following(server.url())), HttpError::Reason::tooManyRedirects);
    EXPECT_EQ(server.requests().size(), 21);
}

TEST(Redirects, leadToNothingButTheWeb) {
    for (const char *target : {"file:///etc/hostname", "ftp://127.0.0.1/x", "gopher://127.0.0.1/x"}) {
        ScriptedEngine server;
        server.answer(Script(302).header("Location", target));
        EXPECT_EQ(failureOf(following(server.url())), HttpError::Reason::badAddress) << target;
    }
}

TEST(Redirects, aServerThatIsGoneAtTheSecondStepIsAFailure) {
    ScriptedEngine last;
    last.answer(Script::hangUp());
    ScriptedEngine first;
    first.answer(redirect(last.url()));
    EXPECT_EQ(failureOf(following(first.url())), HttpError::Reason::lost);
}

TEST(Redirects, fromOutsideToThisMachineLeaveTheProxy) {
    ScriptedEngine here;
    here.answer(Script(200).raw("here"));
    ScriptedEngine proxy;
    proxy.answer(redirect(at(here, u"/x"_s)));
    const EnvironmentVariable variable("http_proxy", proxy.url().toEncoded());
    EXPECT_EQ(await(fetch(following(QUrl(u"http://outside.example/"_s)), {})).body, "here");
    EXPECT_EQ(proxy.requests().size(), 1);
    EXPECT_EQ(here.requests().first().line, "GET /x HTTP/1.1");
}

TEST(Redirects, fromThisMachineToOutsideTakeTheProxy) {
    ScriptedEngine proxy;
    proxy.answer(Script(200).raw("outside"));
    ScriptedEngine here;
    here.answer(redirect(QUrl(u"http://outside.example/x"_s)));
    const EnvironmentVariable variable("http_proxy", proxy.url().toEncoded());
    EXPECT_EQ(await(fetch(following(here.url()), {})).body, "outside");
    EXPECT_EQ(proxy.requests().first().line, "GET http://outside.example/x HTTP/1.1");
}

TEST(Proxy, isNotAskedForThisMachineUnderAnyOfItsNames) {
    ScriptedEngine proxy;
    proxy.answer(Script(502));
    ScriptedEngine here;
    here.answer(Script(200));
    const EnvironmentVariable variable("http_proxy", proxy.url().toEncoded());
    for (const QString &host : {u"127.0.0.1"_s, u"127.1.2.3"_s, u"localhost"_s, u"[::1]"_s}) {
        HttpRequest request;
        request.url = QUrl(u"http://%1:%2/"_s.arg(host).arg(here.url().port()));
        // Nobody may listen at that name; the proxy isn't asked all the same.
        try {
            await(fetchStatus(request, {}));
        } catch (const HttpError &error) {
            EXPECT_EQ(error.reason(), HttpError::Reason::unreachable) << host.toStdString();
        }
    }
    EXPECT_TRUE(proxy.requests().isEmpty());
}

TEST(Proxy, isNotAskedForWhomTheEnvironmentExempts) {
    ScriptedEngine proxy;
    proxy.answer(Script(200));
    const EnvironmentVariable variable("http_proxy", proxy.url().toEncoded());
    const EnvironmentVariable exempt("no_proxy", "outside.invalid");
    HttpRequest request;
    request.url = QUrl(u"http://outside.invalid/"_s);
    EXPECT_THROW(await(fetchStatus(request, {})), HttpError);
    request.url = QUrl(u"http://other.invalid/"_s);
    EXPECT_EQ(await(fetchStatus(request, {})), 200);
    const EnvironmentVariable all("no_proxy", "*");
    EXPECT_THROW(await(fetchStatus(request, {})), HttpError);
}
