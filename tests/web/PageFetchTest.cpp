#include "web/PageFetch.h"

#include "records/Characters.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"
#include "web/WebURL.h"

#include <future>

using namespace Qt::StringLiterals;

namespace {

const QString notListed = u"That page was not in the search results, so it was not opened."_s;
const QString notOpened = u"That page could not be opened."_s;
const QString notAllowed = u"That address is not allowed."_s;
const QString notReadable = u"That page had no readable text."_s;

/// The web beyond this machine: a proxy on the loopback that answers for every host, so that requests go
/// to the addresses that the gate lets pass.
class PageFetchTest : public testing::Test {
protected:
    void serve(const QString &url, const Script &script) {
        m_pages.insert(QUrl(url).toEncoded(), script);
        m_web.answerEach([pages = m_pages](const ScriptedEngine::Request &request) {
            return pages.value(request.line.split(' ').value(1), Script(404));
        });
    }

    /// The text of a page with this answer.
    QString textOf(const Script &script) {
        serve(u"http://203.0.113.7/page"_s, script);
        return fetched(u"http://203.0.113.7/page"_s);
    }

    QString fetched(const QString &url) { return await(fetchTask(url, {})); }

    Task<QString> fetchTask(const QString &url, std::stop_token stop) {
        return fetchPage(url, {normalizeFetchURL(url)}, m_resolver, stop);
    }

    QByteArrayList requestLines() const {
        QByteArrayList lines;
        for (const ScriptedEngine::Request &request : m_web.requests())
            lines.append(request.line);
        return lines;
    }

    ScriptedEngine m_web;
    urlSafety::Resolver m_resolver = [](const QString &host) {
        QList<IPAddress> addresses{IPAddress::parse(u"203.0.113.7"_s).value()};
        if (host.startsWith(u"inside"_s))
            addresses.append(IPAddress::parse(u"10.0.0.1"_s).value());
        if (host.startsWith(u"nobody"_s))
            throw urlSafety::Blocked();
        return addresses;
    };

private:
    QHash<QByteArray, Script> m_pages;
    const EnvironmentVariable m_proxy{"http_proxy", m_web.url().toEncoded()};
    const EnvironmentVariable m_secureProxy{"https_proxy", m_web.url().toEncoded()};
    const EnvironmentVariable m_exempt{"no_proxy", ""};
};

QByteArray deflated(const QByteArray &bytes) {
    constexpr int lengthPrefix = 4;
    return qCompress(bytes, 9).sliced(lengthPrefix);
}

} // namespace

TEST_F(PageFetchTest, thePageComesAsItsText) {
    EXPECT_EQ(textOf(Script(200).raw("<body><h1>Title</h1>").raw("<p>Text &amp; more</p></body>")),
              u"Title Text & more"_s);
}

TEST_F(PageFetchTest, theRequestIsThatOfABrowserWithNoMemory) {
    serve(u"http://e.test/a?b"_s, Script(200).raw("text"));
    EXPECT_EQ(fetched(u"http://e.test/a?b#c"_s), u"text"_s);
    const ScriptedEngine::Request request = m_web.requests().first();
    EXPECT_EQ(request.line, "GET http://e.test/a?b HTTP/1.1");
    EXPECT_EQ(request.headers.value("host"), "e.test");
    EXPECT_EQ(request.headers.value("user-agent"),
              "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 (KHTML, like Gecko) "
              "Version/17.0 Safari/605.1.15");
    for (const char *header : {"cookie", "referer", "authorization", "range"})
        EXPECT_FALSE(request.headers.contains(header)) << header;
}

TEST_F(PageFetchTest, onlyWhatASearchHasFoundIsOpened) {
    serve(u"http://e.test/a"_s, Script(200).raw("text"));
    const auto open = [&](const QString &url, const QSet<QString> &allowed) {
        return await(fetchPage(url, allowed, m_resolver, {}));
    };
    const QSet<QString> allowed{u"http://e.test/a"_s};
    EXPECT_EQ(open(u"http://e.test/b"_s, allowed), notListed);
    EXPECT_EQ(open(u"http://e.test/a?"_s, allowed), notListed);
    EXPECT_EQ(open(u"https://e.test/a"_s, allowed), notListed);
    EXPECT_EQ(open(u"http://e.test/A"_s, allowed), notListed);
    EXPECT_EQ(open(u"http://e.test/a"_s, {}), notListed);
    EXPECT_EQ(open(u""_s, allowed), notListed);
    EXPECT_EQ(open(u"http://127.0.0.1/"_s, allowed), notListed);
    EXPECT_TRUE(requestLines().isEmpty());
    EXPECT_EQ(open(u"http://e.test/a"_s, allowed), u"text"_s);
    EXPECT_EQ(open(u"HTTP://E.test/a#b"_s, allowed), u"text"_s);
}

TEST_F(PageFetchTest, anAddressIsOpenedAsItWasGiven) {
    serve(u"http://e.test/a/"_s, Script(200).raw("text"));
    EXPECT_EQ(fetched(u"http://e.test/a/"_s), u"text"_s);
    EXPECT_EQ(requestLines(), QByteArrayList{"GET http://e.test/a/ HTTP/1.1"});
}

TEST_F(PageFetchTest, aTextThatIsNoAddressIsNotOpened) {
    for (const QString &url : {u""_s, u"http://a b/"_s, u"http://[e/"_s, u"http://e.test:x/"_s})
        EXPECT_EQ(fetched(url), notOpened) << url.toStdString();
    EXPECT_TRUE(requestLines().isEmpty());
}

TEST_F(PageFetchTest, anAddressThatIsNotPublicIsNotAllowedAndNothingIsSent) {
    for (const QString &url :
         {u"http://127.0.0.1/"_s, u"http://[::1]/"_s, u"http://0x7f.1/"_s, u"http://printer.local/"_s,
          u"http://user@e.test/"_s, u"ftp://e.test/"_s, u"file:///etc/passwd"_s, u"e.test/a"_s,
          u"http:///x"_s, u"http://inside.test/"_s, u"http://nobody.test/"_s})
        EXPECT_EQ(fetched(url), notAllowed) << url.toStdString();
    EXPECT_TRUE(requestLines().isEmpty());
}

TEST_F(PageFetchTest, theSystemJudgesNamesUnlessThereIsAnotherResolver) {
    EXPECT_EQ(await(fetchPage(u"http://nobody.invalid/"_s, {u"http://nobody.invalid"_s}, {})), notAllowed);
    serve(u"http://203.0.113.7/"_s, Script(200).raw("text"));
    EXPECT_EQ(await(fetchPage(u"http://203.0.113.7/"_s, {u"http://203.0.113.7"_s}, {})), u"text"_s);
}

TEST_F(PageFetchTest, whatIsNoSuccessIsNotShown) {
    for (const int status : {300, 304, 400, 401, 404, 410, 500, 503})
        EXPECT_EQ(textOf(Script(status).raw("text")), notOpened) << status;
    for (const int status : {200, 203, 299})
        EXPECT_EQ(textOf(Script(status).raw("text")), u"text"_s) << status;
    EXPECT_EQ(textOf(Script::plain(204)), notReadable);
}

TEST_F(PageFetchTest, aPageThatHasMovedIsFollowedAndNotCheckedAgain) {
    serve(u"http://e.test/a"_s, Script(301).header("Location", "http://inside.test/b"));
    serve(u"http://inside.test/b"_s, Script(307).header("Location", "/c"));
    serve(u"http://inside.test/c"_s, Script(200).raw("text"));
    EXPECT_EQ(fetched(u"http://e.test/a"_s), u"text"_s);
    EXPECT_EQ(requestLines(),
              (QByteArrayList{"GET http://e.test/a HTTP/1.1", "GET http://inside.test/b HTTP/1.1",
                              "GET http://inside.test/c HTTP/1.1"}));
}

TEST_F(PageFetchTest, aPageThatMovesForEverOrOutOfTheWebIsNotOpened) {
    EXPECT_EQ(textOf(Script(302).header("Location", "http://203.0.113.7/page")), notOpened);
    EXPECT_EQ(textOf(Script(302).header("Location", "file:///etc/passwd")), notOpened);
    EXPECT_EQ(textOf(Script(302).header("Location", "ftp://e.test/")), notOpened);
}

TEST_F(PageFetchTest, aPageThatNeverEndsSayingThatItHasMovedIsNotOpened) {
    serve(u"http://203.0.113.7/there"_s, Script(200).raw("text"));
    EXPECT_EQ(textOf(Script(302).header("Location", "/there").repeat(QByteArray(20'000, 'x'))), notOpened);
    EXPECT_TRUE(eventually([&] { return m_web.openConnections() == 0; }));
}

TEST_F(PageFetchTest, aConnectionThatBreaksIsNotOpened) {
    EXPECT_EQ(textOf(Script::hangUp()), notOpened);
    EXPECT_EQ(textOf(Script(200).raw("text").drop()), notOpened);
    EXPECT_EQ(textOf(Script(200).raw("text").pause(20).reset()), notOpened);
    EXPECT_EQ(textOf(Script::plain().header("Content-Length", "10").raw("text")), notOpened);
}

TEST_F(PageFetchTest, aBodyLongerThanAnnouncedEndsWhereItWasSaidTo) {
    EXPECT_EQ(textOf(Script::plain().header("Content-Length", "4").raw("text and more")), u"text"_s);
}

TEST_F(PageFetchTest, aConnectionThatIsNotSecureIsNotOpened) {
    EXPECT_EQ(fetched(u"https://203.0.113.7/"_s), notOpened);
    EXPECT_EQ(requestLines(), QByteArrayList{"CONNECT 203.0.113.7:443 HTTP/1.1"});
    m_web.answerEach([](const ScriptedEngine::Request &) { return Script::plain(200).raw("in the clear"); });
    EXPECT_EQ(fetched(u"https://203.0.113.7/"_s), notOpened);
}

TEST_F(PageFetchTest, twoMillionBytesAreReadAndNoMore) {
    const QByteArray start(1'999'990, ' ');
    EXPECT_EQ(textOf(Script(200).raw(start + "0123456789abc")), u"0123456789"_s);
    EXPECT_EQ(textOf(Script(200).raw(start + "<p>0123456").hold()), u"0123456"_s) << "isn't waited for";
    EXPECT_EQ(textOf(Script(200).raw(start + "<p>012345")), u"012345"_s);
    EXPECT_EQ(textOf(Script(200).raw(start + "<p>ab<p class=x>")), u"ab<p cl"_s) << "within a tag";
    EXPECT_TRUE(eventually([&] { return m_web.openConnections() == 0; }));
}

TEST_F(PageFetchTest, aBodyWithoutAnEndIsCut) {
    EXPECT_EQ(textOf(Script(200).repeat(QByteArray(20'000, 'x'))), QString(6'000, u'x'));
    EXPECT_TRUE(eventually([&] { return m_web.openConnections() == 0; }));
}

TEST_F(PageFetchTest, ofAPageThatIsCutAllIsRead) {
    const QByteArray page = "<title>Title</title><body>Text" + QByteArray(3'000'000, ' ') + "</body>";
    EXPECT_EQ(textOf(Script(200).raw(page)), u"Title Text"_s);
}

TEST_F(PageFetchTest, aPageThatComesSlowlyIsWaitedFor) {
    Script slow(200);
    for (const char letter : QByteArray("slowly"))
        slow.raw(QByteArray(1, letter)).pause(20);
    EXPECT_EQ(textOf(slow), u"slowly"_s);
}

TEST_F(PageFetchTest, aCompressedPageIsReadAndMeasuredByWhatItWas) {
    const auto compressed = [](const QByteArray &page) {
        return Script(200).header("Content-Encoding", "deflate").raw(deflated(page));
    };
    EXPECT_EQ(textOf(compressed("<p>text")), u"text"_s);
    EXPECT_EQ(textOf(compressed(QByteArray(1'999'990, ' ') + "0123456789abc" + QByteArray(90'000'000, 'x'))),
              u"0123456789"_s);
    EXPECT_EQ(textOf(Script(200).header("Content-Encoding", "gzip").raw("no gzip")), notOpened);
}

TEST_F(PageFetchTest, whatIsNotInUTF8IsInLatin1) {
    EXPECT_EQ(textOf(Script(200).raw("Z\xC3\xBCrich")), u"Z\u00FCrich"_s);
    EXPECT_EQ(textOf(Script(200).raw("Z\xFCrich")), u"Z\u00FCrich"_s);
    EXPECT_EQ(textOf(Script(200).raw("\xC3\xBC\xFF")), u"\u00C3\u00BC\u00FF"_s);
    const QByteArray start(1'999'999, ' ');
    EXPECT_EQ(textOf(Script(200).raw(start + "\xC3\xBC")), u"\u00C3"_s) << "cut within a character";
}

TEST_F(PageFetchTest, aPageWithNothingToReadSaysSo) {
    for (const char *page : {"", " \n", "<script>x</script>", "<p>&nbsp;</p>"})
        EXPECT_EQ(textOf(Script(200).raw(page)), notReadable) << page;
}

TEST_F(PageFetchTest, theTextIsCutAtSixThousandCharacters) {
    const QString flag = u"\U0001F1E9\U0001F1EA"_s;
    EXPECT_EQ(textOf(Script(200).raw(flag.repeated(6'001).toUtf8())), flag.repeated(6'000));
    EXPECT_EQ(textOf(Script(200).raw(QByteArray(6'000, 'x'))), QString(6'000, u'x'));
    EXPECT_EQ(characterCount(textOf(Script(200).raw(QByteArray("a ").repeated(4'000)))), 6'000);
}

TEST_F(PageFetchTest, aLetterWithMarksWithoutEndIsCutToo) {
    const QString text = textOf(Script(200).raw("a" + QByteArray("\xCC\x81").repeated(900'000)));
    EXPECT_EQ(characterCount(text), 1);
    EXPECT_EQ(text.size(), 24'000);
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    const QString families = textOf(Script(200).raw(u"x"_s.toUtf8() + family.toUtf8().repeated(6'000)));
    EXPECT_LE(families.size(), 24'000);
    EXPECT_FALSE(families.back().isHighSurrogate()) << "no half of a character";
}

TEST_F(PageFetchTest, aStopClosesTheConnectionAtOnce) {
    serve(u"http://e.test/"_s, Script(200).raw("begun").hold());
    std::stop_source stop;
    Task<QString> task = fetchTask(u"http://e.test/"_s, stop.get_token());
    EXPECT_TRUE(eventually([&] { return m_web.openConnections() == 1; }));
    stop.request_stop();
    EXPECT_THROW(await(std::move(task)), Cancelled);
    EXPECT_TRUE(eventually([&] { return m_web.openConnections() == 0; }));
}

TEST_F(PageFetchTest, aStopWaitsForNoServerOfNames) {
    const auto answered = std::make_shared<std::promise<void>>();
    const auto isAsked = std::make_shared<std::atomic<bool>>(false);
    m_resolver = [answered, isAsked](const QString &) {
        *isAsked = true;
        answered->get_future().wait();
        return QList{IPAddress::parse(u"203.0.113.7"_s).value()};
    };
    std::stop_source stop;
    Task<QString> task = fetchTask(u"http://e.test/"_s, stop.get_token());
    EXPECT_TRUE(eventually([&] { return isAsked->load(); }));
    stop.request_stop();
    EXPECT_THROW(await(std::move(task)), Cancelled);
    answered->set_value();
    letPass(20);
    EXPECT_TRUE(requestLines().isEmpty());
}

TEST_F(PageFetchTest, namesAreAskedForOffTheMainThread) {
    const auto asking = std::make_shared<std::promise<std::thread::id>>();
    m_resolver = [asking](const QString &) {
        asking->set_value(std::this_thread::get_id());
        return QList<IPAddress>();
    };
    EXPECT_EQ(fetched(u"http://e.test/"_s), notAllowed);
    EXPECT_NE(asking->get_future().get(), std::this_thread::get_id());
}
