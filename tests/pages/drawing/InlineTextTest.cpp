#include "pages/drawing/InlineText.h"

#include "pages/drawing/HtmlEntity.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

InlineText parse(const QString &source) {
    return parseInlineText(source);
}

QString shown(const QString &source) {
    return parse(source).text;
}

/// The spans as "style:text", with the link behind.
QStringList described(const QString &source) {
    const InlineText inlineText = parse(source);
    QStringList result;
    for (const InlineSpan &span : inlineText.spans) {
        QString style;
        for (const auto &[flag, letter] :
             {std::pair(InlineStyle::bold, u'b'), std::pair(InlineStyle::italic, u'i'),
              std::pair(InlineStyle::strikethrough, u's'), std::pair(InlineStyle::code, u'c')}) {
            if (has(span.style, flag))
                style += letter;
        }
        const QString link = span.link.isEmpty() ? QString() : u'>' + span.link.toString();
        result.append(style + u':' + inlineText.text.mid(span.start, span.length) + link);
    }
    return result;
}

bool isSubsequence(QStringView part, QStringView whole) {
    qsizetype place = 0;
    for (const QChar character : part) {
        place = whole.indexOf(character, place);
        if (place < 0)
            return false;
        ++place;
    }
    return true;
}

} // namespace

TEST(InlineText, plainTextIsItself) {
    for (const QString &text : {QString(), u"a"_s, u"  two  blanks \t"_s, u"a\nb\r\nc\n"_s, u"2 * 3 * 4"_s})
        EXPECT_EQ(parse(text), (InlineText{text, {}}));
}

TEST(InlineText, stylesAreSetApart) {
    EXPECT_EQ(described(u"a **b** _c_ ~~d~~ ~d~ `e` f"_s),
              (QStringList{u"b:b"_s, u"i:c"_s, u"s:d"_s, u"s:d"_s, u"c:e"_s}));
    EXPECT_EQ(shown(u"a **b** _c_ ~~d~~ `e` f"_s), u"a b c d e f"_s);
    EXPECT_EQ(described(u"***both** one*"_s), (QStringList{u"bi:both"_s, u"i: one"_s}));
    EXPECT_EQ(described(u"`**x**`"_s), QStringList{u"c:**x**"_s});
}

TEST(InlineText, aStyleGoesOverALineFeed) {
    EXPECT_EQ(described(u"**a\nb**"_s), QStringList{u"b:a\nb"_s});
    EXPECT_EQ(described(u"`a\nb`"_s), QStringList{u"c:a\nb"_s});
    EXPECT_EQ(shown(u"a  \n  *b*  \nc\r\nd"_s), u"a  \n  b  \nc\r\nd"_s);
}

TEST(InlineText, whatMakesABlockElsewhereIsTextHere) {
    for (const QString &text :
         {u"# x"_s, u"- x"_s, u"+ x"_s, u"1. x"_s, u"> x"_s, u"```\nx"_s, u"    indented"_s, u"\tindented"_s,
          u"| a | b |\n|---|---|\n| c | d |"_s, u"title\n==="_s, u"title\n---"_s, u"***"_s,
          u"<div>\nx\n</div>"_s, u"[a]: http://example.com"_s, u"a\n\n\nb"_s, u"* x\n* y"_s, u"<!-- x -->"_s,
          u"~~~\nx"_s})
        EXPECT_EQ(parse(text), (InlineText{text, {}})) << text.toStdString();
}

TEST(InlineText, htmlStaysText) {
    EXPECT_EQ(parse(u"a <b>c</b> <img src=\"http://x.y/z\">"_s).spans, QList<InlineSpan>());
    EXPECT_EQ(shown(u"a <b>c</b> <img src=\"*z*\">"_s), u"a <b>c</b> <img src=\"*z*\">"_s);
}

TEST(InlineText, linksLeadToTheWebAndToMailAlone) {
    EXPECT_EQ(described(u"[a **b**](https://example.com/x \"title\")!"_s),
              (QStringList{u":a >https://example.com/x"_s, u"b:b>https://example.com/x"_s}));
    EXPECT_EQ(described(u"[a](mailto:me@example.com) [b](http://example.com)"_s),
              (QStringList{u":a>mailto:me@example.com"_s, u":b>http://example.com"_s}));
    for (const QString &text :
         {u"[a](file:///etc/passwd)"_s, u"[a](javascript:alert)"_s, u"[a](/x)"_s, u"[a]()"_s,
          u"[a](data:x)"_s, u"[a](http://)"_s, u"[a](//example.com)"_s, u"[a](mailto:)"_s})
        EXPECT_EQ(parse(text), (InlineText{u"a"_s, {}})) << text.toStdString();
}

TEST(InlineText, anAddressMayHaveEscapesAndAnyLetters) {
    EXPECT_EQ(described(u"é [a](https://example.com/ü_\\(b\\)?x=1&amp;y=2)"_s),
              QStringList{u":a>https://example.com/ü_(b)?x=1&y=2"_s});
}

TEST(InlineText, onlyAddressesInAngleBracketsAreLinksByThemselves) {
    EXPECT_EQ(described(u"<https://example.com> <me@example.com>"_s),
              (QStringList{u":https://example.com>https://example.com"_s,
                           u":me@example.com>mailto:me@example.com"_s}));
    EXPECT_EQ(parse(u"https://example.com www.example.com me@example.com"_s).spans, QList<InlineSpan>());
    EXPECT_EQ(shown(u"<ftp://example.com>"_s), u"ftp://example.com"_s);
    EXPECT_EQ(parse(u"<ftp://example.com>"_s).spans, QList<InlineSpan>());
}

TEST(InlineText, anImageIsItsText) {
    EXPECT_EQ(parse(u"a ![the *sea*](https://example.com/sea.png) b"_s).text, u"a the sea b"_s);
    EXPECT_EQ(described(u"[![sea](https://x.example/s.png)](https://example.com)"_s),
              QStringList{u":sea>https://example.com"_s});
}

TEST(InlineText, escapesAndReferencesAreRead) {
    EXPECT_EQ(parse(u"\\*a\\* &amp; &lt;b&gt; &#8364; &#x20AC; &mdash; &nosuch; &"_s),
              (InlineText{u"*a* & <b> € € — &nosuch; &"_s, {}}));
    EXPECT_EQ(htmlEntity(u"&#0;"), QString(QChar::ReplacementCharacter));
    EXPECT_EQ(htmlEntity(u"&#xD800;"), QString(QChar::ReplacementCharacter));
    EXPECT_EQ(htmlEntity(u"&#;"), std::nullopt);
    EXPECT_EQ(htmlEntity(u"&;"), std::nullopt);
}

TEST(InlineText, everyScriptKeepsItsPlaces) {
    EXPECT_EQ(described(u"日本**語**です 😀*é\u0301*😀 שלום **עולם**"_s),
              (QStringList{u"b:語"_s, u"i:é\u0301"_s, u"b:עולם"_s}));
    const QString damaged = QString(QChar(0xD800)) + u"**a**"_s + QChar(0xDC00) + QChar(u'\0') + u"*b*"_s;
    EXPECT_EQ(described(damaged), (QStringList{u"b:a"_s, u"i:b"_s}));
    EXPECT_EQ(shown(damaged), QString(QChar(0xD800)) + u'a' + QChar(0xDC00) + QChar(u'\0') + u'b');
}

TEST(InlineText, whatIsNotClosedIsText) {
    for (const QString &text :
         {u"**a"_s, u"a**"_s, u"`a"_s, u"[a"_s, u"[a](http://b"_s, u"~~a"_s, u"***"_s, u"[]"_s})
        EXPECT_EQ(parse(text), (InlineText{text, {}})) << text.toStdString();
}

TEST(InlineText, whatIsShownIsPartOfTheSource) {
    const QStringList parts{u"*"_s, u"**"_s, u"_"_s, u"`"_s, u"~~"_s,         u"["_s,  u"]("_s,
                            u")"_s, u"!["_s, u"<"_s, u">"_s, u"http://a.b"_s, u"\\"_s, u"\n"_s,
                            u" "_s, u"ü"_s,  u"😀"_s, u"a"_s, u"#"_s};
    QRandomGenerator random(7);
    for (int round = 0; round < 4000; ++round) {
        QString source;
        for (int count = random.bounded(24); count > 0; --count)
            source += parts.at(random.bounded(int(parts.size())));
        const InlineText inlineText = parse(source);
        ASSERT_TRUE(isSubsequence(inlineText.text, source)) << source.toStdString();
        int end = 0;
        for (const InlineSpan &span : inlineText.spans) {
            ASSERT_GE(span.start, end) << source.toStdString();
            ASSERT_GT(span.length, 0) << source.toStdString();
            end = span.end();
        }
        ASSERT_LE(end, inlineText.text.size());
    }
}

TEST(InlineText, aTextOfAnyShapeIsReadInBoundedTime) {
    QString growing;
    for (int count = 1; growing.size() < 1'000'000; ++count)
        growing += QString(count, u'`') + u'a';
    QStringList hostile{growing};
    for (const QString &part : {u"["_s, u"]"_s, u"*"_s, u"*a "_s, u"a**b "_s, u"<"_s, u"<!--"_s, u"![a]("_s,
                                u"`"_s, u"&#1"_s, u"\\"_s, u"*a **b [c _d ~e"_s, u"[a](<b"_s, u"~a "_s})
        hostile.append(part.repeated(1'000'000 / part.size()));
    for (const QString &text : hostile) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(parse(text).text, text);
        parse(text.first(longestInlineText));
        EXPECT_LT(timer.elapsed(), 1000) << text.first(20).toStdString();
    }
}

TEST(InlineText, aTextThatIsTooLongIsPlain) {
    const QString longest = u"**a** "_s + QString(longestInlineText - 6, u'x');
    EXPECT_EQ(parse(longest).spans.size(), 1);
    EXPECT_EQ(parse(longest + u'x'), (InlineText{longest + u'x', {}}));
}

TEST(InlineText, theSameTextIsReadOnce) {
    const QString source = u"see **this**"_s;
    const InlineText first = inlineAttributedText(source);
    EXPECT_EQ(first, parse(source));
    EXPECT_TRUE(inlineAttributedText(source).text.isSharedWith(first.text));
}
