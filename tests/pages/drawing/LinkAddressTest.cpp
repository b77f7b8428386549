#include "pages/drawing/LinkAddress.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(LinkAddress, pagesAndLettersCanBeFollowed) {
    for (const QString &link :
         {u"https://example.org/a?b=c@d#e"_s, u"http://example.org:8080"_s, u"mailto:a@example.org"_s})
        EXPECT_EQ(linkAddress(link), QUrl(link)) << link.toStdString();
    EXPECT_EQ(linkAddress(u" https://example.org \n"_s), QUrl(u"https://example.org"_s));
}

TEST(LinkAddress, nothingElseCan) {
    for (const QString &link :
         {QString(), u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"example.org"_s, u"https:///path"_s,
          u"https://a b.org"_s, u"mailto:"_s, u"mailto://a@b/c"_s})
        EXPECT_EQ(linkAddress(link), std::nullopt) << link.toStdString();
}

TEST(LinkAddress, noNameStandsBeforeAHost) {
    for (const QString &link :
         {u"https://good.org@evil.org/"_s, u"https://a:b@evil.org"_s, u"https://@evil.org"_s})
        EXPECT_EQ(linkAddress(link), std::nullopt) << link.toStdString();
}

TEST(LinkAddress, aLetterHasNothingButItsReceiver) {
    EXPECT_EQ(linkAddress(u"mailto:a@b.org?attach=/etc/passwd&body=x#y"_s), QUrl(u"mailto:a@b.org"_s));
    EXPECT_EQ(linkAddress(u"mailto:?to=a@b.org"_s), std::nullopt);
    EXPECT_TRUE(linkAddress(u"https://example.org?"_s + QString(5000, u'a')));
    EXPECT_TRUE(linkAddress(u"mailto:a@b.org?body="_s + QString(5000, u'a')));
    EXPECT_EQ(linkAddress(u"https://a"_s + QString(1'000'000, u'\u0301')), std::nullopt)
        << "and that without thinking about it for hours";
}

TEST(LinkAddress, aHostIsNoLongerThanOneCanBe) {
    EXPECT_TRUE(linkAddress(u"https://"_s + u"abcd."_s.repeated(50) + u"org"_s));
    EXPECT_EQ(linkAddress(u"https://"_s + u"abcd."_s.repeated(51) + u"org"_s), std::nullopt);
}

TEST(LinkAddress, isShownAsItIsSent) {
    EXPECT_EQ(shownAddress(QUrl(u"https://exämple.org/ä"_s)), u"https://xn--exmple-cua.org/%C3%A4"_s);
    EXPECT_EQ(shownAddress(QUrl(u"mailto:a@example.org"_s)), u"mailto:a@example.org"_s);
}

TEST(LinkAddress, ofALongOneTheHostAndTheEndsAreShown) {
    const QString host = u"https://"_s + u"abcd."_s.repeated(50) + u"org"_s;
    const QString shown = shownAddress(QUrl(host + u"/start/"_s + QString(3000, u'a') + u"/end"_s));
    EXPECT_TRUE(shown.startsWith(host + u"/start/"_s));
    EXPECT_TRUE(shown.contains(u'…'));
    EXPECT_TRUE(shown.endsWith(u"/end"_s));
    EXPECT_LT(shown.size(), 550);
}
