#include "web/WebURL.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(NormalizedURL, schemeAndHostAreInLowerCaseAndTheRestIsNot) {
    EXPECT_EQ(normalizeFetchURL(u"HTTPS://Example.TEST:8080/Path/A?Query=B"_s),
              u"https://example.test:8080/Path/A?Query=B"_s);
}

TEST(NormalizedURL, theFragmentGoesAndThenOneSlashAtTheEnd) {
    EXPECT_EQ(normalizeFetchURL(u"https://Example.test/a/#top"_s), u"https://example.test/a"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/a"_s), u"https://example.test/a"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/a#"_s), u"https://example.test/a"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/a#b/"_s), u"https://example.test/a"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/a/"_s), u"https://example.test/a"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/a//"_s), u"https://example.test/a/"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/"_s), u"https://example.test"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test"_s), u"https://example.test"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://example.test/?a=/"_s), u"https://example.test/?a="_s);
}

TEST(NormalizedURL, whatElseAPageIsKnownByStays) {
    for (const QString &text :
         {u"https://e.test/a?b"_s, u"https://e.test/a?"_s, u"http://e.test/a/../b"_s,
          u"https://u:p@e.test/a"_s, u"https://e.test/a%2Fb"_s, u"https://e.test/a%20b+c"_s,
          u"https://e.test:443/a"_s, u"ftp://e.test/a"_s, u"https://[2001:db8::1]/a"_s, u"mailto:a@e.test"_s})
        EXPECT_EQ(normalizeFetchURL(text), text) << text.toStdString();
}

TEST(NormalizedURL, anInternationalNameHasOneForm) {
    EXPECT_EQ(normalizeFetchURL(u"https://EX\u00C4MPLE.test/\u00E4"_s),
              u"https://xn--exmple-cua.test/%C3%A4"_s);
    EXPECT_EQ(normalizeFetchURL(u"https://xn--exmple-cua.test/%C3%A4"_s),
              u"https://xn--exmple-cua.test/%C3%A4"_s);
}

TEST(NormalizedURL, aTextThatIsNoURLStaysAsItIs) {
    for (const QString &text :
         {u""_s, u" https://E.test/"_s, u"http://[E/"_s, u"HTTP://a b/#x"_s, u"http://E:x/"_s})
        EXPECT_EQ(normalizeFetchURL(text), text) << text.toStdString();
}

TEST(NormalizedURL, aTextWithoutASchemeIsRelative) {
    EXPECT_EQ(normalizeFetchURL(u"Example.test/A/#x"_s), u"Example.test/A"_s);
    EXPECT_EQ(normalizeFetchURL(u"/"_s), u""_s);
}

TEST(NormalizedURL, isItsOwnNormalForm) {
    for (const QString &text :
         {u"https://E.test/a b/%zz?\u00E4=%41#x"_s, u"HTTP://E.TEST"_s, u"http://0x7f.1/%7e"_s}) {
        const QString once = normalizeFetchURL(text);
        EXPECT_EQ(normalizeFetchURL(once), once) << once.toStdString();
    }
}

TEST(ParsedURL, whatMayNotStandInOneIsEncoded) {
    EXPECT_EQ(parseURL(u"https://e.test/a b?\u00E4|"_s).value().toEncoded(),
              "https://e.test/a%20b?%C3%A4%7C");
}

TEST(ParsedURL, whatCouldNotBeReadAgainIsNone) {
    for (const QString &text :
         {u"http://[::%\uFFFD]ff:10\u0004.0.0.1]:"_s, u"a//"_s + QString(500, u'\uFFFD')}) {
        ASSERT_TRUE(QUrl(text).isValid());
        EXPECT_FALSE(parseURL(text));
        EXPECT_EQ(normalizeFetchURL(text), text);
    }
}

TEST(ParsedURL, aHostOfManyMarksIsNoneInNoTime) {
    // QUrl says so, too; for all rounds it would take many minutes, and the test's time would be up.
    const QString marks = QString(1'900, u'\u0301') + QString(1'900, u'\u0316');
    const QString encoded = u"%CC%81"_s.repeated(300) + u"%CC%96"_s.repeated(300);
    for (int round = 0; round < 20'000; ++round) {
        EXPECT_FALSE(parseURL(u"http://a"_s + marks + u".test/"_s));
        EXPECT_FALSE(parseURL(u"http://user@a"_s + encoded + u".test/"_s));
    }
}

TEST(ParsedURL, marksThatAHostHasRoomForAreOrdered) {
    EXPECT_EQ(parseURL(u"http://a\u0301\u0316.test/"_s), parseURL(u"http://a\u0316\u0301.test/"_s));
    for (const int count : {1, 10, 30, 50})
        EXPECT_TRUE(parseURL(u"http://a"_s + QString(count, u'\u0316') + u".test/"_s)) << count;
    const QString manyMarks(200, u'\u0316');
    EXPECT_TRUE(parseURL(u"http://user"_s + manyMarks + u"@a.test/"_s)) << "which is for the gate to judge";
    EXPECT_TRUE(parseURL(u"http://a.test/"_s + manyMarks));
}

TEST(ParsedURL, aHostOfAMegabyteIsNone) {
    // Marks that have to be put in order, which takes time of the square of their number.
    const QString marks = QString(500'000, u'\u0301') + QString(500'000, u'\u0316');
    for (const QString &start : {u"http://a"_s, u"//a"_s, u"http://user@a"_s}) {
        EXPECT_FALSE(parseURL(start + marks + u"/"_s));
        EXPECT_EQ(normalizeFetchURL(start + marks), start + marks);
    }
    EXPECT_TRUE(parseURL(u"http://a.test/"_s + marks));
    EXPECT_TRUE(parseURL(u"http://a.test?"_s + marks));
    EXPECT_TRUE(parseURL(u"http://a.test#"_s + marks));
}
