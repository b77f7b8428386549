#include "pages/PageAnalysis.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A reply of these lines.
QString lines(const QStringList &all) {
    return all.join(u'\n');
}

PageAnalysis failed(const QString &visible, const PageIssue &issue) {
    return {visible, std::nullopt, issue};
}

PageAnalysis made(const QString &visible, const QString &title, const QString &markdown) {
    return {visible, PageSnapshot{title, markdown}, std::nullopt};
}

PageAnalysis unknown(const QString &visible, const QString &name) {
    return failed(visible, issue::UnknownDirective{name});
}

PageAnalysis pageOf(const QStringList &inner) {
    return analyzePageReply(u"```page\n"_s + lines(inner) + u"\n```"_s);
}

QString titleOf(const QString &markdown) {
    return derivePageTitle(markdown, u"none"_s);
}

} // namespace

TEST(AnalyzePageReply, aTextWithoutAPageStaysAsItIs) {
    for (const QString &text :
         {u""_s, u" a \n"_s, u"```python\nx\n```"_s, u"```pages\na\n```"_s, u"```page:green\na\n```"_s,
          u"````page\na\n```"_s, u"x ```page\na\n```"_s, u"```page\r\na\n```"_s, u"```p\nage\n```"_s})
        EXPECT_EQ(analyzePageReply(text), failed(text, issue::Missing{})) << text.toStdString();
}

TEST(AnalyzePageReply, thePageIsCutOut) {
    EXPECT_EQ(analyzePageReply(u"Intro\n```page\n# T\n```\nOutro"_s),
              made(u"Intro\nOutro"_s, u"T"_s, u"# T"_s));
    EXPECT_EQ(analyzePageReply(u"```page\n# T\n```"_s), made(u""_s, u"T"_s, u"# T"_s));
    EXPECT_EQ(analyzePageReply(u"\n a\n\n```page\n# T\n```\n\nb \n"_s),
              made(u"a\n\n\nb"_s, u"T"_s, u"# T"_s));
}

TEST(AnalyzePageReply, nothingOfThePageIsTrimmed) {
    EXPECT_EQ(analyzePageReply(u"```page\n\n  # T \t\n\n```"_s), made(u""_s, u"T"_s, u"\n  # T \t\n"_s));
    EXPECT_EQ(analyzePageReply(u"```page\na\r\n```"_s), made(u""_s, u"a\r"_s, u"a\r"_s));
}

TEST(AnalyzePageReply, theOpeningLineMayBeSpacedAndInCapitals) {
    for (const QString &opening : {u"```PAGE"_s, u"``` page"_s, u" \t```\u00A0Page "_s})
        EXPECT_EQ(analyzePageReply(opening + u"\nT\n```"_s), made(u""_s, u"T"_s, u"T"_s))
            << opening.toStdString();
}

TEST(AnalyzePageReply, anOpeningLineInsideCodeOpens) {
    EXPECT_EQ(analyzePageReply(u"```text\n```page\nT\n```"_s), made(u"```text"_s, u"T"_s, u"T"_s));
}

TEST(AnalyzePageReply, theFirstPageCounts) {
    EXPECT_EQ(analyzePageReply(u"```page\nT\n```\n```page\nb\n```"_s),
              made(u"```page\nb\n```"_s, u"T"_s, u"T"_s));
}

TEST(AnalyzePageReply, aPageThatNeverEndsIsCutOffAndGone) {
    EXPECT_EQ(analyzePageReply(u" a \n```page"_s), failed(u"a"_s, issue::UnclosedFence{}));
    EXPECT_EQ(analyzePageReply(u"a\n```page\n# T\nb\n"_s), failed(u"a"_s, issue::UnclosedFence{}));
}

TEST(AnalyzePageReply, aPageWithNothingInItIsEmpty) {
    EXPECT_EQ(analyzePageReply(u"```page\n```"_s), failed(u""_s, issue::Empty{}));
    EXPECT_EQ(analyzePageReply(u"```page\n\n  \n```"_s), failed(u""_s, issue::Empty{}));
    EXPECT_EQ(analyzePageReply(u"a\n```page\n\r\u2028\n```\nb"_s), failed(u"a\nb"_s, issue::Empty{}));
}

TEST(AnalyzePageReply, fencesInsideArePartOfThePage) {
    EXPECT_EQ(analyzePageReply(u"```page\n```metric\nA: 1\n```\n```"_s),
              made(u""_s, u"A: 1"_s, u"```metric\nA: 1\n```"_s));
    EXPECT_EQ(analyzePageReply(u"```page\n```metric\nA: 1\n```"_s), failed(u""_s, issue::UnclosedFence{}));
    EXPECT_EQ(analyzePageReply(u"```page\n```metric\n```chart\nA: 1\n```\n```\nb\n```\nc"_s),
              made(u"c"_s, u"A: 1"_s, u"```metric\n```chart\nA: 1\n```\n```\nb"_s));
}

TEST(AnalyzePageReply, fourBackticksAreAFenceWithANameOfItsOwn) {
    EXPECT_EQ(analyzePageReply(u"```page\na\n````\n```\n```"_s), unknown(u""_s, u"`"_s));
}

TEST(AnalyzePageReply, anUnknownFenceIsNamedAndThePageIsGone) {
    EXPECT_EQ(analyzePageReply(u"a\n```page\n```foo\nx\n```\n```\nb"_s), unknown(u"a\nb"_s, u"foo"_s));
    EXPECT_EQ(pageOf({u"``` FOO : green"_s, u"x"_s, u"```"_s}), unknown(QString(), u"foo"_s));
    EXPECT_EQ(pageOf({u"```bash title"_s, u"x"_s, u"```"_s}), unknown(QString(), u"bash title"_s));
    EXPECT_EQ(pageOf({u"```chart"_s, u"x"_s, u"```end"_s, u"```"_s, u"```"_s}), unknown(QString(), u"end"_s));
}

TEST(FirstUnknownDirective, directivesAndLanguagesAreKnown) {
    for (const QString &name :
         {u"metric"_s, u"divider"_s, u"Chart:GREEN"_s, u"chart:no colour"_s, u"c"_s, u"c++"_s, u"C++ :red"_s,
          u"r"_s, u"Dockerfile"_s, u"properties"_s, u":green"_s, u" : "_s, u""_s})
        EXPECT_EQ(firstUnknownDirective(u"a\n```"_s + name + u"\nb\n```"_s), std::nullopt)
            << name.toStdString();
}

TEST(FirstUnknownDirective, everyDirectiveAndEveryLanguageIsKnown) {
    const QStringList directives =
        u"metric chart line donut progress callout timeline sources flow compare cards spec subtitle "
        "divider"_s.split(u' ');
    const QStringList languages =
        u"python py swift js javascript ts typescript jsx tsx json yaml yml toml ini xml html css scss sass "
        "bash sh shell zsh fish powershell ps1 sql graphql go golang rust ruby rb java kotlin scala c cpp "
        "c++ csharp cs php perl lua r matlab julia dart elixir haskell clojure objc assembly asm dockerfile "
        "makefile diff patch http regex latex tex markdown md text txt plaintext csv tsv log env "
        "properties"_s.split(u' ');
    ASSERT_EQ(directives.size(), 14);
    ASSERT_EQ(languages.size(), 72);
    for (const QString &name : directives + languages) {
        EXPECT_EQ(firstUnknownDirective(u"```"_s + name), std::nullopt) << name.toStdString();
        EXPECT_EQ(firstUnknownDirective(u"```"_s + name + u'?'), name + u'?') << name.toStdString();
    }
}

TEST(FirstUnknownDirective, anythingElseIsTold) {
    EXPECT_EQ(firstUnknownDirective(u"```c#"), u"c#"_s);
    EXPECT_EQ(firstUnknownDirective(u"```page"), u"page"_s);
    EXPECT_EQ(firstUnknownDirective(u"```one\n```two"), u"one"_s);
    EXPECT_EQ(firstUnknownDirective(u"foo\n``foo\nx ```foo"), std::nullopt);
}

TEST(DerivePageTitle, theFirstLineThatSaysSomething) {
    EXPECT_EQ(titleOf(u"\n \t\n```chart\n  A: 1 \n```\nb"_s), u"A: 1"_s);
    EXPECT_EQ(titleOf(u"# \n**\n####\n# ****\nb"_s), u"b"_s);
}

TEST(DerivePageTitle, marksAreLeftOut) {
    EXPECT_EQ(titleOf(u"**Bold** title"_s), u"Bold title"_s);
    EXPECT_EQ(titleOf(u"###Title"_s), u"Title"_s);
    EXPECT_EQ(titleOf(u"######### \u00A0Title # one"_s), u"Title # one"_s);
    EXPECT_EQ(titleOf(u"***a***"_s), u"*a*"_s);
    EXPECT_EQ(titleOf(u"- item"_s), u"- item"_s);
}

TEST(DerivePageTitle, sixtyCharactersAsAReaderCounts) {
    EXPECT_EQ(titleOf(QString(61, u'a')), QString(60, u'a'));
    EXPECT_EQ(titleOf(u"e\u0301"_s.repeated(61)), u"e\u0301"_s.repeated(60));
    EXPECT_EQ(titleOf(u"# "_s + QString(59, u'a') + u" b"_s), QString(59, u'a') + u' ');
}

TEST(DerivePageTitle, aTextThatSaysNothingHasTheFallback) {
    for (const QString &text : {u""_s, u"```\n# \n```chart"_s, u"#\n\t"_s})
        EXPECT_EQ(derivePageTitle(text, u"Page"_s), u"Page"_s) << text.toStdString();
}

TEST(HidePageWhileStreaming, theLinesBeforeThePageAreShown) {
    EXPECT_EQ(hidePageWhileStreaming(u"Here it is:\n```page\n# Draft"), u"Here it is:"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n\n```page"), u"a\n"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n \t\u00A0```page\nb\n```\nc"), u"a"_s);
}

TEST(HidePageWhileStreaming, aPageInTheFirstLineHidesAll) {
    EXPECT_EQ(hidePageWhileStreaming(u"  ```page\n# Draft"), u""_s);
    EXPECT_EQ(hidePageWhileStreaming(u"\n```page"), u""_s);
}

TEST(HidePageWhileStreaming, itIsATestOfTheBeginningOnly) {
    EXPECT_EQ(hidePageWhileStreaming(u"a\n```pages\nb"), u"a"_s);
    EXPECT_EQ(hidePageWhileStreaming(u"a\n```page:green\nb"), u"a"_s);
}

TEST(HidePageWhileStreaming, otherSpellingsAreShown) {
    for (const QString &text : {u""_s, u"a"_s, u"``` page\n# Draft"_s, u"```PAGE\n# Draft"_s, u"````page"_s,
                                u"x ```page"_s, u"\r```page"_s, u"``page"_s, u"```pag"_s, u"`` ```page"_s})
        EXPECT_EQ(hidePageWhileStreaming(text), text) << text.toStdString();
}

TEST(HidePageWhileStreaming, aLaterLineCountsAlthoughAnEarlierOneOnlyMentionsIt) {
    EXPECT_EQ(hidePageWhileStreaming(u"write ```page```page\nb\n```page\nc"), u"write ```page```page\nb"_s);
}
