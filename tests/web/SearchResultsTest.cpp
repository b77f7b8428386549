#include "web/SearchResults.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString link(const QString &attributes, const QString &title = u"Title"_s) {
    return u"<a class=\"result__a\" %1>%2</a>"_s.arg(attributes, title);
}

QString snippet(const QString &text) {
    return u"<a class=\"result__snippet\" href=\"https://e.test/\">%1</a>"_s.arg(text);
}

/// Where the first result leads to; nothing if there is none.
QString target(const QString &attributes) {
    const QList<SearchSource> results = parseSearchResults(link(attributes));
    return results.isEmpty() ? u"none"_s : results.first().url;
}

QString resolved(const QString &href) {
    return resolveResultURL(href).value_or(u"none"_s);
}

} // namespace

TEST(SearchResults, areNumberedWithTitleAddressAndSnippet) {
    const QString page =
        u"<div class=\"result results_links\"><h2>\n"_s +
        link(u"rel=nofollow href=\"//duckduckgo.com/l/?uddg=https%3A%2F%2Fe.test%2Fa%3Fb&amp;rut=1\""_s,
             u"The <b>first</b>\none &amp; best"_s) +
        u"</h2>"_s + snippet(u"What it <b>says</b>&nbsp; "_s) + u"</div><div>"_s +
        link(u"href='http://f.test/'"_s, u" Second "_s) + snippet(u"And more"_s) + u"</div>"_s;
    EXPECT_EQ(parseSearchResults(page),
              (QList<SearchSource>{{1, u"The first one & best"_s, u"https://e.test/a?b"_s, u"What it says"_s},
                                   {2, u"Second"_s, u"http://f.test/"_s, u"And more"_s}}));
}

TEST(SearchResults, ofAPageWithNoneAreNone) {
    EXPECT_TRUE(parseSearchResults({}).isEmpty());
    EXPECT_TRUE(parseSearchResults(u"<html><body>No results.</body></html>"_s).isEmpty());
    EXPECT_TRUE(parseSearchResults(snippet(u"a snippet alone"_s)).isEmpty());
}

TEST(SearchResults, areFiveAtMost) {
    QString page;
    for (int number = 1; number <= 7; ++number)
        page += link(u"href=https://e.test/%1"_s.arg(number)) + snippet(QString::number(number));
    const QList<SearchSource> results = parseSearchResults(page);
    ASSERT_EQ(results.size(), 5);
    EXPECT_EQ(results.last(), (SearchSource{5, u"Title"_s, u"https://e.test/5"_s, u"5"_s}));
}

TEST(SearchResults, anAddressMayStandInEitherQuotesOrInNone) {
    EXPECT_EQ(target(u"href=\"https://e.test/a'b\""_s), u"https://e.test/a'b"_s);
    EXPECT_EQ(target(u"href='https://e.test/\"a'"_s), u"https://e.test/\"a"_s);
    EXPECT_EQ(target(u"href=https://e.test/a x=y"_s), u"https://e.test/a"_s);
    EXPECT_EQ(target(u"HREF\n=\u00A0 https://e.test/a"_s), u"https://e.test/a"_s);
    EXPECT_EQ(target(u"data-href=https://e.test/a"_s), u"https://e.test/a"_s);
    EXPECT_EQ(target(u"href href=https://e.test/a href=https://e.test/b"_s), u"https://e.test/a"_s);
}

TEST(SearchResults, aQuoteThatDoesNotEndWithinTheLinkIsPartOfTheAddress) {
    const QString page = link(u"href=\"https://e.test/a"_s) + u"\""_s + link(u"href=https://e.test/b"_s);
    const QList<SearchSource> results = parseSearchResults(page);
    ASSERT_EQ(results.size(), 1);
    EXPECT_EQ(results.first().url, u"https://e.test/b"_s);
}

TEST(SearchResults, theFirstAddressInTheLinkIsItsOwn) {
    EXPECT_EQ(parseSearchResults(link(u"x"_s, u"<b href=https://e.test/a>"_s)).value(0).url,
              u"https://e.test/a"_s);
    EXPECT_EQ(target(u"href=\"\" href=https://e.test/a"_s), u"none"_s);
    EXPECT_EQ(target(u"href=\"ftp://e.test\" href=https://e.test/a"_s), u"none"_s);
    EXPECT_EQ(target(u"href="_s), u"none"_s);
}

TEST(SearchResults, aLinkThatLeadsNowhereTakesNoNumberAndNoSnippet) {
    const QString page = link(u"title=x"_s, u"nothing"_s) + snippet(u"A"_s) + link(u"href=/more"_s) +
                         snippet(u"B"_s) + link(u"href=https://e.test/"_s, u"Real"_s) + snippet(u"C"_s);
    EXPECT_EQ(parseSearchResults(page), (QList<SearchSource>{{1, u"Real"_s, u"https://e.test/"_s, u"A"_s}}));
}

TEST(SearchResults, withoutSnippetsAndTitlesAreKept) {
    EXPECT_EQ(parseSearchResults(link(u"href=https://e.test/"_s, {})),
              (QList<SearchSource>{{1, {}, u"https://e.test/"_s, {}}}));
}

TEST(SearchResults, withinOneAnotherEachCount) {
    const QString page = u"<a class='result__a'>1<a class='result__a' href='https://e.test/'>2</a>3</a>"_s;
    EXPECT_EQ(parseSearchResults(page), (QList<SearchSource>{{1, u"1 2 3"_s, u"https://e.test/"_s, {}},
                                                             {2, u"2"_s, u"https://e.test/"_s, {}}}));
}

TEST(SearchResults, entitiesInAnAddressAreReadBeforeItsItems) {
    EXPECT_EQ(target(u"href='https://e.test/?a&amp;uddg=b%26amp%3B'"_s), u"b&amp;"_s);
}

TEST(ResolvedURL, isTheTargetOfTheRedirector) {
    EXPECT_EQ(resolved(u"//d.test/l/?uddg=https%3A%2F%2Fe.test%2F%C3%A4%3Fa%3Db%26c&rut=1"_s),
              u"https://e.test/\u00E4?a=b&c"_s);
    EXPECT_EQ(resolved(u"/l/?kh=-1&uddg=https://e.test/"_s), u"https://e.test/"_s);
    EXPECT_EQ(resolved(u"https://d.test/?uddg=a+b%2B"_s), u"a+b+"_s);
    EXPECT_EQ(resolved(u"https://d.test/?uddg=a=b"_s), u"a=b"_s);
    EXPECT_EQ(resolved(u"https://d.test/?u%64dg=a"_s), u"a"_s);
    EXPECT_EQ(resolved(u"https://d.test/?uddg=file%3A%2F%2F%2Fx"_s), u"file:///x"_s) << "is not looked at";
    EXPECT_EQ(resolved(u"https://d.test/?uddg=a&uddg=b"_s), u"a"_s);
}

TEST(ResolvedURL, isTheLinkItselfWhereThereIsNoRedirector) {
    for (const QString &text :
         {u"https://e.test/a?b#c"_s, u"http://e.test"_s, u"https://d.test/?uddg="_s,
          u"https://d.test/?uddg"_s, u"https://d.test/?UDDG=a"_s, u"https://d.test/?xuddg=a"_s,
          u"https://d.test/#?uddg=a"_s, u"https://d.test/?uddg=&uddg=b"_s})
        EXPECT_EQ(resolved(text), text) << text.toStdString();
    EXPECT_EQ(resolved(u" \n//e.test/a\u00A0"_s), u"https://e.test/a"_s);
    EXPECT_EQ(resolved(u"  http://e.test  "_s), u"http://e.test"_s);
}

TEST(ResolvedURL, ofAnythingElseIsNone) {
    for (const QString &text :
         {u""_s, u"  "_s, u"/more"_s, u"more"_s, u"#top"_s, u"?q=a"_s, u"ftp://e.test/"_s,
          u"javascript:x()"_s, u"HTTP://e.test/"_s, u"http:e.test"_s, u"https:/e.test"_s,
          u"https://[e.test/"_s, u"https://a b/"_s, u"https://a b/?uddg=c"_s})
        EXPECT_EQ(resolved(text), u"none"_s) << text.toStdString();
}
