#include "pages/InlineText.h"

#include "pages/CharacterReference.h"
#include "pages/InlineParser.h"

#include <QElapsedTimer>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The text with its runs in braces, each after the initials of its styles: "a {s:bold} {l(url):link}".
QString shown(const QString &text) {
    const AttributedText read = parseInlineMarkdown(text);
    QString result;
    qsizetype done = 0;
    for (const InlineRun &run : read.runs) {
        EXPECT_GE(run.start, done);
        EXPECT_GT(run.length, 0);
        QString styles;
        if (run.styles & InlineStyle::emphasis)
            styles += u'e';
        if (run.styles & InlineStyle::strong)
            styles += u's';
        if (run.styles & InlineStyle::code)
            styles += u'c';
        if (run.styles & InlineStyle::strikethrough)
            styles += u'd';
        if (!run.link.isEmpty())
            styles += u"l("_s + run.link + u')';
        result += read.text.sliced(done, run.start - done) + u'{' + styles + u':' +
                  read.text.sliced(run.start, run.length) + u'}';
        done = run.start + run.length;
    }
    return result + read.text.sliced(done);
}

} // namespace

TEST(InlineText, theFiveKindsOfMarkupAreRead) {
    EXPECT_EQ(shown(u"a *b* _c_ d"_s), u"a {e:b} {e:c} d"_s);
    EXPECT_EQ(shown(u"**a** __b__"_s), u"{s:a} {s:b}"_s);
    EXPECT_EQ(shown(u"a `b*c*` ``d`e``"_s), u"a {c:b*c*} {c:d`e}"_s);
    EXPECT_EQ(shown(u"~~a~~"_s), u"{d:a}"_s);
    EXPECT_EQ(shown(u"see [a](https://x.org/?a=1&amp;b) <https://y.org>"_s),
              u"see {l(https://x.org/?a=1&b):a} {l(https://y.org):https://y.org}"_s);
}

TEST(InlineText, stylesMayStandInEachOther) {
    EXPECT_EQ(shown(u"***a*** **b *c* d**"_s), u"{es:a} {s:b }{es:c}{s: d}"_s);
    EXPECT_EQ(shown(u"**[a `b`](c)**"_s), u"{sl(c):a }{scl(c):b}"_s);
}

TEST(InlineText, anImageIsItsText) {
    EXPECT_EQ(shown(u"a ![*b* c](d.png) e"_s), u"a {e:b} c e"_s);
}

TEST(InlineText, whatIsNoMarkupStays) {
    for (const QString &text :
         {u""_s, u"a"_s, u"2 * 3 * 4"_s, u"snake_case_name"_s, u"**a"_s, u"`a"_s, u"[a]"_s, u"[a](b"_s,
          u"a < b & c"_s, u"<b>x</b>"_s, u"https://x.org"_s, u"&unknown;"_s, u"~ "_s})
        EXPECT_EQ(shown(text), text) << text.toStdString();
}

TEST(InlineText, whatBeginsABlockElsewhereIsTextHere) {
    for (const QString &text : {u"# *a"_s, u"- *a"_s, u"1. *a"_s, u"> *a"_s, u"    *a"_s, u"\t*a"_s,
                                u"```*a"_s, u"*a\n==="_s, u"*a\n---"_s, u"***\n*"_s, u"| *a | b |\n|-|-|"_s,
                                u"[a]: b"_s, u"<div>*a"_s, u"<!-- *a"_s, u"* * *"_s})
        EXPECT_EQ(shown(text), text) << text.toStdString();
}

TEST(InlineText, whiteSpaceIsPreserved) {
    for (const QString &text : {u"  *a  "_s, u"*a  \n  b"_s, u"*a\n\n\nb"_s, u"\n*a\n"_s, u" \n *a\n\t\n"_s,
                                u"*a\u2003b"_s, u"*\u00A0"_s})
        EXPECT_EQ(shown(text), text) << text.toStdString();
    EXPECT_EQ(shown(u"*a*\r\n\r\n\r*b*\r"_s), u"{e:a}\r\n\r\n\r{e:b}\r"_s);
    EXPECT_EQ(shown(u" **a** \n\n _b_  \nc"_s), u" {s:a} \n\n {e:b}  \nc"_s);
}

TEST(InlineText, markupMayGoOverALineEnd) {
    EXPECT_EQ(shown(u"**a\nb** c"_s), u"{s:a\nb} c"_s);
    EXPECT_EQ(shown(u"`a\nb`"_s), u"{c:a b}"_s);
}

TEST(InlineText, atTheEndsOfALineEmphasisIsReadAsUsual) {
    EXPECT_EQ(shown(u"*(a)*"_s), u"{e:(a)}"_s);
    EXPECT_EQ(shown(u"_a_\n_b_"_s), u"{e:a}\n{e:b}"_s);
    EXPECT_EQ(shown(u"*a\n*(b"_s), u"*a\n*(b"_s);
}

TEST(InlineText, aBackslashTakesAMarkItsMeaning) {
    EXPECT_EQ(shown(u"\\*a\\* \\\\ \\a"_s), u"*a* \\ \\a"_s);
    EXPECT_EQ(shown(u"a\\\nb"_s), u"a\nb"_s);
    EXPECT_EQ(shown(u"a\\"_s), u"a\\"_s);
}

TEST(InlineText, aTextWithEverySpaceIsPlain) {
    const QString text = u"*a* \u2003\u2002\u2001\u2000\u205F\u1680"_s;
    EXPECT_EQ(shown(text), text);
}

TEST(InlineText, aTextThatIsTooLongIsPlain) {
    const QString text = u"*a* "_s.repeated(longestInlineText);
    EXPECT_EQ(parseInlineMarkdown(text), (AttributedText{text, {}}));
}

TEST(InlineText, theWorstTextsTakeNoTime) {
    const QStringList units{u"["_s,   u"]"_s,   u"!["_s,      u"]("_s,  u"[a]("_s,  u"*"_s,
                            u"*a "_s, u"_a"_s,  u"**a *b "_s, u"`"_s,   u"`a``"_s,  u"~"_s,
                            u"<"_s,   u"<a "_s, u"<!--"_s,    u"<?"_s,  u"&"_s,     u"&a"_s,
                            u"\\"_s,  u"[[]"_s, u"a\n"_s,     u"*\n"_s, u"[a](<b"_s};
    for (const QString &unit : units) {
        QElapsedTimer timer;
        timer.start();
        parseInlineMarkdown(unit.repeated(longestInlineText / unit.size()));
        EXPECT_LT(timer.elapsed(), 1000) << unit.toStdString();
    }
}

TEST(InlineText, theSameTextIsReadOnce) {
    const QString text = u"one **two**"_s;
    const AttributedText first = inlineAttributedText(text);
    EXPECT_EQ(first, parseInlineMarkdown(text));
    EXPECT_EQ(inlineAttributedText(QString(text.data(), text.size())).text.constData(),
              first.text.constData());
    EXPECT_EQ(rememberedInlineTexts, 600);
}

TEST(CharacterReference, numbersAndCommonNamesAreResolved) {
    EXPECT_EQ(resolvedReference(u"&amp;"_s), u"&"_s);
    EXPECT_EQ(resolvedReference(u"&mdash;"_s), u"—"_s);
    EXPECT_EQ(resolvedReference(u"&#65;"_s), u"A"_s);
    EXPECT_EQ(resolvedReference(u"&#x1F600;"_s), u"\U0001F600"_s);
    EXPECT_EQ(resolvedReference(u"&#X41;"_s), u"A"_s);
    for (const QString &text : {u"&#0;"_s, u"&#xD800;"_s, u"&#x110000;"_s, u"&#99999999999;"_s})
        EXPECT_EQ(resolvedReference(text), u"\uFFFD"_s) << text.toStdString();
    for (const QString &text : {u"&unknown;"_s, u"&"_s, u"amp;"_s, u"&;"_s})
        EXPECT_EQ(resolvedReference(text), text);
}
