#include "web/WebSearch.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray page =
    "<a class='result__a' href='https://e.test/1'>One</a><a class='result__snippet'>First</a>"
    "<a class='result__a' href='https://e.test/2'>Zw\u00F6lf</a>";

const SearchOutcome failure{u"Search is temporarily unavailable."_s, {}};

SearchOutcome found(const Script &script) {
    ScriptedEngine server;
    server.answer(script);
    return await(webSearch(u"query"_s, server.url(), {}));
}

ScriptedEngine::Request requestFor(const QString &query) {
    ScriptedEngine server;
    server.answer(Script(200).raw(page));
    await(webSearch(query, server.url().resolved(QUrl(u"/html/"_s)), {}));
    return server.requests().value(0);
}

} // namespace

TEST(WebSearch, theOutcomeIsATextWithThreeLinesASourceAndTheSources) {
    const SearchOutcome outcome = found(Script(200).raw(page));
    EXPECT_EQ(outcome.text, u"[1] One\nhttps://e.test/1\nFirst\n\n[2] Zw\u00F6lf\nhttps://e.test/2\n"_s);
    EXPECT_EQ(outcome.sources, (QList<SearchSource>{{1, u"One"_s, u"https://e.test/1"_s, u"First"_s},
                                                    {2, u"Zw\u00F6lf"_s, u"https://e.test/2"_s, {}}}));
}

TEST(WebSearch, theQueryIsPostedAsAFormOfABrowser) {
    const ScriptedEngine::Request request = requestFor(u"weather"_s);
    EXPECT_EQ(request.line, "POST /html/ HTTP/1.1");
    EXPECT_EQ(request.body, "q=weather");
    EXPECT_EQ(request.headers.value("content-type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(request.headers.value("user-agent"),
              "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 (KHTML, like Gecko) "
              "Version/17.0 Safari/605.1.15");
    for (const char *header : {"cookie", "referer", "authorization", "expect"})
        EXPECT_FALSE(request.headers.contains(header)) << header;
}

TEST(WebSearch, theQueryIsEncodedByteForByte) {
    EXPECT_EQ(requestFor(u"a&b+c=d?e"_s).body, "q=a%26b%2Bc%3Dd%3Fe");
    EXPECT_EQ(requestFor(u"AZaz09-._~!$'()*,;:@/"_s).body, "q=AZaz09-._~!$'()*,;:@/");
    EXPECT_EQ(requestFor(u" \"#%<>[\\]^`{|}\n\u007F"_s).body,
              "q=%20%22%23%25%3C%3E%5B%5C%5D%5E%60%7B%7C%7D%0A%7F");
    EXPECT_EQ(requestFor(u"\u00FC\u20AC\U0001F600"_s).body, "q=%C3%BC%E2%82%AC%F0%9F%98%80");
    EXPECT_EQ(requestFor(u""_s).body, "q=");
}

TEST(WebSearch, aPageWithAnyOtherStatusIsReadButForTheOneForRobots) {
    for (const int status : {200, 201, 404, 500})
        EXPECT_EQ(found(Script(status).raw(page)).sources.size(), 2) << status;
    EXPECT_EQ(found(Script(202).raw(page)), failure);
}

TEST(WebSearch, aPageThatAsksForAPersonIsAFailure) {
    for (const char *word : {"captcha", "reCAPTCHA", "anomaly-modal", "Anomaly-Modal__title"})
        EXPECT_EQ(found(Script(200).raw(page + word)), failure) << word;
    EXPECT_NE(found(Script(200).raw(page + "anomaly modal")), failure);
}

TEST(WebSearch, aPageThatIsNoTextIsAFailure) {
    EXPECT_EQ(found(Script(200).raw(page + "\xFF")), failure);
    EXPECT_EQ(found(Script(200).raw(page + "\xC3")), failure);
    EXPECT_EQ(found(Script(200).raw(page + "\xED\xA0\x80")), failure);
}

TEST(WebSearch, aPageThatIsFarTooLongIsAFailure) {
    ScriptedEngine server;
    server.answer(Script(200).raw(QByteArray(2'000'001, ' ')));
    EXPECT_EQ(await(webSearch(u"tea"_s, server.url(), {})).text, u"Search is temporarily unavailable."_s);
}

TEST(WebSearch, aPageWithoutResultsIsAFailure) {
    EXPECT_EQ(found(Script(200)), failure);
    EXPECT_EQ(found(Script(200).raw("<html>No results.</html>")), failure);
}

TEST(WebSearch, aServerThatDoesNotAnswerIsAFailure) {
    EXPECT_EQ(found(Script::hangUp()), failure);
    EXPECT_EQ(found(Script(200).raw(page).drop()), failure);
    EXPECT_EQ(await(webSearch(u"a"_s, QUrl(u"nonsense:"_s), {})), failure);
    EXPECT_EQ(await(webSearch(u"a"_s, QUrl(), {})), failure);
}

TEST(WebSearch, aPageThatHasMovedIsFollowed) {
    ScriptedEngine there;
    there.answer(Script(200).raw(page));
    EXPECT_EQ(found(Script(302).header("Location", there.url().toEncoded())).sources.size(), 2);
    EXPECT_EQ(there.requests().value(0).line, "GET / HTTP/1.1");
}

TEST(WebSearch, aStopIsACancellationAtOnce) {
    ScriptedEngine server;
    server.answer(Script(200).raw(page).hold());
    std::stop_source stop;
    Task<SearchOutcome> task = webSearch(u"a"_s, server.url(), stop.get_token());
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 1; }));
    stop.request_stop();
    EXPECT_THROW(await(std::move(task)), Cancelled);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
    EXPECT_THROW(await(webSearch(u"a"_s, server.url(), stop.get_token())), Cancelled);
}

TEST(SearchAddress, isThisBuildsUnlessAnOverrideSaysOtherwise) {
    EXPECT_EQ(searchURL().path(), u"/html/"_s);
    EXPECT_EQ(searchURL().scheme(), u"https"_s);
    const EnvironmentVariable elsewhere("OSTRELIN_SEARCHURL", "http://127.0.0.1:1/search");
    EXPECT_EQ(searchURL(), QUrl(u"http://127.0.0.1:1/search"_s));
}
