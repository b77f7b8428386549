#include "web/ReadableText.h"
#include "web/SearchResults.h"

#include <QStringList>

#include <functional>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Two megabytes that were made to take long. Nothing is expected but an end: what took time of the square
// of a page would run for minutes to hours, and the test's time would be up.

namespace {

constexpr qsizetype size = 2'000'000;

const QStringList units{u"<"_s,
                        u">"_s,
                        u"<>"_s,
                        u"</"_s,
                        u"&"_s,
                        u"&amp;"_s,
                        u"&lt;"_s,
                        u"&nbsp;"_s,
                        u" "_s,
                        u"\u3000"_s,
                        u"<script>"_s,
                        u"</script>"_s,
                        u"<script"_s,
                        u"<script></script"_s,
                        u"<script></script>"_s,
                        u"<style>"_s,
                        u"<noscript><nav>"_s,
                        u"<body>"_s,
                        u"<body"_s,
                        u"</body>"_s,
                        u"<bodyx>"_s,
                        u"<body></bod"_s,
                        u"a\u0301"_s,
                        u"<a href"_s,
                        u"class="_s,
                        u"class='"_s,
                        u"class=\""_s,
                        u"<a class=\"result__a"_s,
                        u"<a class='result__a'"_s,
                        u"<a class='result__a'>"_s,
                        u"<a class='result__a' href="_s,
                        u"<a class='result__a' href=\""_s,
                        u"<a class='result__a'></a>"_s,
                        u"<a class='result__a' href='x'></a>"_s,
                        u"result__a "_s,
                        u"href="_s,
                        u"href=\""_s,
                        u"= "_s,
                        u"=  "_s};

QString filled(const QString &unit) {
    return unit.repeated(size / unit.size());
}

/// An opening tag for each number with the class of a link, and what closes them in the end.
QString nested(const std::function<QString(int)> &name, int count) {
    QString page;
    for (int number = 0; number < count; ++number)
        page += u"<%1 class='result__a'>"_s.arg(name(number));
    for (int number = count - 1; number >= 0; --number)
        page += u"</%1>"_s.arg(name(number));
    return page;
}

} // namespace

class PageOfOneThing : public testing::TestWithParam<int> {};

TEST_P(PageOfOneThing, isReadInOnePass) {
    const QString page = filled(units.at(GetParam()));
    plainText(page);
    plainText(u"<body>"_s + page + u"</body>"_s);
    parseSearchResults(page);
    parseSearchResults(u"<a class='result__a'>"_s + page + u"</a>"_s);
    parseSearchResults(u"<a class='result__a' href="_s + page);
}

INSTANTIATE_TEST_SUITE_P(HostilePage, PageOfOneThing, testing::Range(0, int(units.size())));

TEST(HostilePage, ofLinksWithinLinksIsReadInOnePass) {
    EXPECT_TRUE(parseSearchResults(nested([](int) { return u"a"_s; }, 80'000)).isEmpty());
    EXPECT_TRUE(parseSearchResults(nested([](int number) { return number % 2 ? u"a"_s : u"ab"_s; }, 80'000))
                    .isEmpty());
}

TEST(HostilePage, ofLinksWithAsManyNamesIsReadInOnePass) {
    EXPECT_TRUE(
        parseSearchResults(nested([](int number) { return QString::number(number, 36); }, 60'000)).isEmpty());
    EXPECT_TRUE(
        parseSearchResults(nested([](int number) { return QString(number + 1, u'a'); }, 1'400)).isEmpty());
}

TEST(HostilePage, ofLinksThatShareAnAddressIsReadInOnePass) {
    constexpr int links = 40'000;
    const QString endOfLink = u"</a>"_s;
    for (const QString &reference : {u" href='ftp:"_s, u" href=ftp:"_s, u" href=\"'"_s}) {
        QString page = nested([](int) { return u"a"_s; }, links);
        const qsizetype middle = page.indexOf(endOfLink);
        // A quotation that ends within half of the links.
        page.insert(middle + links / 2 * endOfLink.size(), u'\'');
        page.insert(middle, reference + QString(500'000, u'x'));
        EXPECT_TRUE(parseSearchResults(page).isEmpty());
    }
}

TEST(HostilePage, ofLinksThatCrossIsReadInOnePass) {
    QString page;
    for (int number = 0; number < 20'000; ++number)
        page += u"<a class='result__a'><b class='result__a'>"_s;
    page += u"<i href='ftp:"_s + QString(200'000, u'x') + u'>' + u"</a>"_s.repeated(20'000) + u'\'' +
            u"</b>"_s.repeated(20'000);
    EXPECT_TRUE(parseSearchResults(page).isEmpty());
}

TEST(HostilePage, whoseAddressesHaveHostsOfAMegabyteIsReadInOnePass) {
    const QString marks = QString(size / 4, u'\u0301') + QString(size / 4, u'\u0316');
    EXPECT_TRUE(
        parseSearchResults(u"<a class='result__a' href='http://a"_s + marks + u"/'></a>"_s).isEmpty());
}
