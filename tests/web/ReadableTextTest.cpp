#include "web/ReadableText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Entities, areTheSixThatAreKnown) {
    EXPECT_EQ(replaceEntities(u"&amp;&lt;&gt;&quot;&#39;&nbsp;x"), u"&<>\"' x"_s);
    for (const QString &text : {u""_s, u"&"_s, u"&;"_s, u"&AMP;"_s, u"&#x27;"_s, u"&#039;"_s, u"&apos;"_s,
                                u"&amp"_s, u"&auml;"_s, u"amp;"_s, u"& amp;"_s})
        EXPECT_EQ(replaceEntities(text), text) << text.toStdString();
}

TEST(Entities, areReadOnce) {
    EXPECT_EQ(replaceEntities(u"&amp;lt;"), u"&lt;"_s);
    EXPECT_EQ(replaceEntities(u"&amp;amp;amp;"), u"&amp;amp;"_s);
    EXPECT_EQ(replaceEntities(u"&&lt;lt;"), u"&<lt;"_s);
    EXPECT_EQ(replaceEntities(u"&am&amp;p;"), u"&am&p;"_s);
}

TEST(CleanText, aTagIsASpace) {
    EXPECT_EQ(cleanText(u"a<b>c</b>d"), u"a c d"_s);
    EXPECT_EQ(cleanText(u"a<b title='>'>c"), u"a '>c"_s);
    EXPECT_EQ(cleanText(u"a<!-- b -->c<br\n/>d"), u"a c d"_s);
    EXPECT_EQ(cleanText(u"1 < 2 and 3 > 2"), u"1 2"_s);
    EXPECT_EQ(cleanText(u"a<<b>c"), u"a c"_s);
}

TEST(CleanText, whatIsNoTagStays) {
    EXPECT_EQ(cleanText(u"a<>b"), u"a<>b"_s);
    EXPECT_EQ(cleanText(u"a <b"), u"a <b"_s);
    EXPECT_EQ(cleanText(u"a > b"), u"a > b"_s);
    EXPECT_EQ(cleanText(u"<><b>c"), u"<> c"_s);
    EXPECT_EQ(cleanText(u"<"), u"<"_s);
}

TEST(CleanText, entitiesBecomeNoTags) {
    EXPECT_EQ(cleanText(u"&lt;b&gt;c"), u"<b>c"_s);
    EXPECT_EQ(cleanText(u"&am<b>p;"), u"&am p;"_s);
    EXPECT_EQ(cleanText(u"<b title=&gt;>c"), u"c"_s);
}

TEST(CleanText, whiteSpaceIsOneSpaceAndNoneAtTheEnds) {
    EXPECT_EQ(cleanText(u" \n a \t\r\n b\u00A0\u2003\u3000c&nbsp;&nbsp;d&nbsp;<b> </b>\u2028"), u"a b c d"_s);
    EXPECT_EQ(cleanText(u"a\u000B\u0085b"), u"a b"_s);
    EXPECT_EQ(cleanText(u"\u200Ba\u200B \u180Eb\u001F"), u"\u200Ba\u200B \u180Eb\u001F"_s);
    EXPECT_EQ(cleanText(u" <b> &nbsp; </b> "), u""_s);
    EXPECT_EQ(cleanText({}), u""_s);
}

TEST(PlainText, aPageIsOneLine) {
    EXPECT_EQ(plainText(u"<html><head><title>T</title></head><body class=x>\n<h1>One</h1>\n<p>Two &amp; "
                        "three.</p></body></html>"_s),
              u"One Two & three."_s);
}

TEST(PlainText, whatAReaderDoesNotSeeGoes) {
    for (const QString &name : {u"script"_s, u"style"_s, u"nav"_s, u"footer"_s, u"noscript"_s}) {
        EXPECT_EQ(plainText(u"a<%1>x</%1>b<%1 y='z'\n>x\n</%1>c"_s.arg(name)), u"a b c"_s);
        EXPECT_EQ(plainText(u"a<%1>x</%1>b"_s.arg(name.toUpper())), u"a b"_s);
        EXPECT_EQ(plainText(u"a<%1>x<%1>y</%1>z</%1>b"_s.arg(name)), u"a z b"_s) << "ends at the first";
        EXPECT_EQ(plainText(u"a<%1>b"_s.arg(name)), u"a b"_s) << "has no end";
        EXPECT_EQ(plainText(u"a<%1>b</%1 >c"_s.arg(name)), u"a b c"_s) << "has no end in this form";
        EXPECT_EQ(plainText(u"a<%1s>b</%1s>c"_s.arg(name)), u"a b c"_s) << "is another element";
        EXPECT_EQ(plainText(u"a<%1_>b</%1>c"_s.arg(name)), u"a b c"_s) << "is another element";
        EXPECT_EQ(plainText(u"a<%1-x>b</%1>c"_s.arg(name)), u"a c"_s) << "is a word before the hyphen";
        EXPECT_EQ(plainText(u"a<%1"_s.arg(name)), u"a<%1"_s.arg(name));
    }
    EXPECT_EQ(plainText(u"<script>only</script>"_s), u""_s);
}

TEST(PlainText, elementsGoInTheOrderOfTheirKinds) {
    EXPECT_EQ(plainText(u"a<style><script>b</style>c</script>d</style>e"_s), u"a e"_s);
    EXPECT_EQ(plainText(u"a<nav><style>b</nav>c</style>d</nav>e"_s), u"a e"_s);
    EXPECT_EQ(plainText(u"a<noscript><nav>b</noscript>c</nav>d"_s), u"a d"_s) << "its end went with another";
    EXPECT_EQ(plainText(u"<scr<nav></nav>ipt>a</script>"_s), u"a"_s) << "nothing grows together";
}

TEST(PlainText, onlyTheBodyIsRead) {
    EXPECT_EQ(plainText(u"a<body>b</body>c"_s), u"b"_s);
    EXPECT_EQ(plainText(u"a<BODY\nid=x>b</Body>c"_s), u"b"_s);
    EXPECT_EQ(plainText(u"a<body>b<body>c</body>d</body>e"_s), u"b c d"_s);
    EXPECT_EQ(plainText(u"a<body-x>b</body>c"_s), u"b"_s);
    EXPECT_EQ(plainText(u"<bodyx>a<body>b</body>c"_s), u"b"_s);
}

TEST(PlainText, aBodyThatIsNotClosedLeavesAllOfThePage) {
    EXPECT_EQ(plainText(u"a<body>b"_s), u"a b"_s);
    EXPECT_EQ(plainText(u"a<body>b<bodyx></body>c"_s), u"a b c"_s);
    EXPECT_EQ(plainText(u"a<body"_s), u"a<body"_s);
    EXPECT_EQ(plainText(u"a</body>c"_s), u"a c"_s);
    EXPECT_EQ(plainText(u"<script><body></script>a<body>b</body>c"_s), u"b"_s);
}
