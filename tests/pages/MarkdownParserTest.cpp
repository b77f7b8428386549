#include "pages/MarkdownParser.h"

#include "pages/Described.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Blocks = QList<BlockContent>;

/// The views are good as long as the text is.
Blocks parsed(const QString &text) {
    Blocks contents;
    for (const MarkdownBlock &block : parseMarkdownBlocks(text))
        contents.append(block.content);
    return contents;
}

/// For texts that are one block.
template<typename Block>
Block only(const QString &text) {
    const QList<MarkdownBlock> blocks = parseMarkdownBlocks(text);
    EXPECT_EQ(blocks.size(), 1) << text.toStdString() << '\n' << described(blocks).toStdString();
    const MarkdownBlock first = blocks.value(0);
    EXPECT_TRUE(std::holds_alternative<Block>(first.content)) << described(blocks).toStdString();
    return std::holds_alternative<Block>(first.content) ? std::get<Block>(first.content) : Block();
}

BlockContent paragraph(const Texts &lines) {
    return block::Paragraph{lines};
}

} // namespace

TEST(Paragraph, anEmptyTextHasNoBlocks) {
    EXPECT_EQ(parsed(u""_s), Blocks());
    EXPECT_EQ(parsed(QString()), Blocks());
    EXPECT_EQ(parsed(u"\n \n\t\n"_s), Blocks());
}

TEST(Paragraph, consecutiveLinesAreOneAndAreTrimmed) {
    EXPECT_EQ(parsed(u" a\n\tb \n\u00A0c\u3000"_s), Blocks{paragraph({u"a"_s, u"b"_s, u"c"_s})});
}

TEST(Paragraph, anEmptyLineEndsIt) {
    EXPECT_EQ(parsed(u"a\n \t\nb\n\n\nc\n"_s),
              (Blocks{paragraph({u"a"_s}), paragraph({u"b"_s}), paragraph({u"c"_s})}));
}

TEST(Paragraph, onlyALineFeedEndsALine) {
    EXPECT_EQ(parsed(u"a\rb\u2028c\vd"_s), Blocks{paragraph({u"a\rb\u2028c\vd"_s})});
    EXPECT_EQ(parsed(u"a\r\n\r\nb"_s), Blocks{paragraph({u"a\r"_s, u"\r"_s, u"b"_s})});
}

TEST(Paragraph, everyOtherBlockInterruptsIt) {
    for (const QString &next : {u"```\n```"_s, u"---"_s, u"# h"_s, u">"_s, u"- b"_s, u"1. n"_s, u"|"_s}) {
        const QString text = u"para\n"_s + next + u"\nmore"_s;
        const Blocks blocks = parsed(text);
        ASSERT_EQ(blocks.size(), 3) << next.toStdString();
        EXPECT_EQ(blocks.first(), paragraph({u"para"_s}));
        EXPECT_EQ(blocks.last(), paragraph({u"more"_s}));
    }
}

TEST(Fence, theBodyIsKeptAsItIs) {
    EXPECT_EQ(only<block::Code>(u"```py\n  a\n\n\tb \n```"_s), (block::Code{u"py"_s, u"  a\n\n\tb "_s}));
}

TEST(Fence, anUnclosedOneRunsToTheEndOfTheText) {
    EXPECT_EQ(only<block::Code>(u"```py\na\nb\n"_s), (block::Code{u"py"_s, u"a\nb\n"_s}));
    EXPECT_EQ(only<block::Code>(u"```"_s), block::Code());
    EXPECT_EQ(only<block::Code>(u"```\n"_s), block::Code());
    EXPECT_EQ(only<block::Code>(u"```\n\n"_s), (block::Code{u""_s, u"\n"_s}));
}

TEST(Fence, closedAtOnceItIsEmpty) {
    EXPECT_EQ(only<block::Code>(u"```\n```"_s), block::Code());
    EXPECT_EQ(only<block::Code>(u"```\n\n```"_s), block::Code());
    EXPECT_EQ(only<block::Code>(u"```\n\n\n```"_s), (block::Code{u""_s, u"\n"_s}));
}

TEST(Fence, anyLineThatBeginsWithThreeBackticksClosesIt) {
    EXPECT_EQ(parsed(u"```py\na\n  ```bash\nb\n````x\nc"_s),
              (Blocks{block::Code{u"py"_s, u"a"_s}, paragraph({u"b"_s}), block::Code{u"`x"_s, u"c"_s}}));
}

TEST(Fence, theInfoTextIsTrimmedAndOtherwiseKept) {
    EXPECT_EQ(only<block::Code>(u"\t``` \u00A0Bash:x y \na"_s).language, u"Bash:x y"_s);
    EXPECT_EQ(only<block::Code>(u"````"_s).language, u"`"_s);
    EXPECT_EQ(only<block::Code>(u"```inline```\na\n```"_s), (block::Code{u"inline```"_s, u"a"_s}));
}

TEST(Fence, itsBodyKnowsNoOtherBlocks) {
    EXPECT_EQ(only<block::Code>(u"```\n# h\n- a\n\n| t |\n```"_s).code, u"# h\n- a\n\n| t |"_s);
}

TEST(Fence, insideACalloutItEndsThatAndTheNextOneOpens) {
    EXPECT_EQ(parsed(u"```callout\nCareful\n```bash\nls\n```"_s),
              (Blocks{block::Callout{u"Careful"_s, {}}, paragraph({u"ls"_s}), block::Code{}}));
}

TEST(Fence, twoBackticksAreNone) {
    EXPECT_EQ(parsed(u"``x``"_s), Blocks{paragraph({u"``x``"_s})});
}

TEST(Rule, itIsExactlyThreeOfOneKind) {
    for (const QString &line : {u"---"_s, u"***"_s, u"___"_s, u" \t---\u00A0"_s})
        EXPECT_EQ(parsed(line), Blocks{block::Rule{}}) << line.toStdString();
    for (const QString &line : {u"----"_s, u"--"_s, u"*-*"_s, u"_ _ _"_s, u"---\r"_s, u"***x"_s})
        EXPECT_EQ(parsed(line), Blocks{paragraph({line})}) << line.toStdString();
}

TEST(Rule, oneWithSpacesIsAListItem) {
    EXPECT_EQ(parsed(u"* * *"_s), Blocks{block::Bullet{{u"* *"_s}}});
    EXPECT_EQ(parsed(u"- - -"_s), Blocks{block::Bullet{{u"- -"_s}}});
}

TEST(Rule, underAParagraphItIsStillARule) {
    EXPECT_EQ(parsed(u"para\n---"_s), (Blocks{paragraph({u"para"_s}), block::Rule{}}));
}

TEST(Heading, itHasOneToSixSignsAndABlank) {
    for (int level = 1; level <= 6; ++level)
        EXPECT_EQ(only<block::Heading>(QString(level, u'#') + u" Head "_s),
                  (block::Heading{level, u"Head"_s}));
    for (const QString &line : {u"####### x"_s, u"#Title"_s, u"#\tx"_s, u"#\u00A0x"_s, u"#"_s, u"#-"_s})
        EXPECT_EQ(parsed(line), Blocks{paragraph({line})}) << line.toStdString();
}

TEST(Heading, withoutATextItIsNone) {
    EXPECT_EQ(parsed(u"# "_s), Blocks{paragraph({u"#"_s})});
}

TEST(Heading, itMayBeIndentedAndItsClosingSignsStay) {
    EXPECT_EQ(only<block::Heading>(u"  ##   Two ##"_s), (block::Heading{2, u"Two ##"_s}));
}

TEST(Heading, itDoesNotTakeTheNextLine) {
    EXPECT_EQ(parsed(u"# A\n# B\nc"_s),
              (Blocks{block::Heading{1, u"A"_s}, block::Heading{1, u"B"_s}, paragraph({u"c"_s})}));
}

TEST(Quote, theBlankIsNotNeededAndAnEmptyLineStays) {
    EXPECT_EQ(only<block::Quote>(u"> a\n>b\n  >\n>> c\n>  # d"_s).lines,
              (Texts{u"a"_s, u"b"_s, u""_s, u"> c"_s, u"# d"_s}));
}

TEST(Quote, anEmptyLineEndsIt) {
    EXPECT_EQ(parsed(u"> a\n\n> b\nc"_s),
              (Blocks{block::Quote{{u"a"_s}}, block::Quote{{u"b"_s}}, paragraph({u"c"_s})}));
}

TEST(Bullet, theThreeMarkersMakeOneFlatList) {
    EXPECT_EQ(only<block::Bullet>(u"- a\n* b\n+ c\n\t  -   d "_s).items,
              (Texts{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
}

TEST(Bullet, anEmptyLineEndsIt) {
    EXPECT_EQ(parsed(u"- a\n\n- b"_s), (Blocks{block::Bullet{{u"a"_s}}, block::Bullet{{u"b"_s}}}));
}

TEST(Bullet, aMarkerNeedsABlankAndAText) {
    for (const QString &line : {u"-a"_s, u"*a*"_s, u"-\ta"_s, u"-\u00A0a"_s, u"- "_s, u"\u2022 a"_s})
        EXPECT_EQ(parsed(line), Blocks{paragraph({line.trimmed()})}) << line.toStdString();
}

TEST(Bullet, aRuleAmongTheItemsEndsTheList) {
    EXPECT_EQ(parsed(u"- a\n---\n- b"_s),
              (Blocks{block::Bullet{{u"a"_s}}, block::Rule{}, block::Bullet{{u"b"_s}}}));
}

TEST(Numbered, theNumbersAreNotKept) {
    EXPECT_EQ(only<block::Numbered>(u"7. a\n 9.  b. c \n007. d"_s).items, (Texts{u"a"_s, u"b. c"_s, u"d"_s}));
}

TEST(Numbered, numericCharactersOfEveryKindCount) {
    const QString digits = u"٣|५|½|Ⅳ|㊈|三|〇|1٣|\U0001D7D0|𒐕|\U00020001"_s;
    for (const QString &number : digits.split(u'|'))
        EXPECT_EQ(only<block::Numbered>(number + u". a"_s).items, Texts{u"a"_s}) << number.toStdString();
}

TEST(Numbered, whatIsNoNumberedLineIsText) {
    for (const QString &line : {u"1.5 apples"_s, u"1) x"_s, u"1.x"_s, u"1."_s, u"a. x"_s, u". x"_s,
                                u"1a. x"_s, u"-1. x"_s, u"1 . x"_s, u"1.\tx"_s, u"1.\u00A0x"_s, u"1.2. x"_s,
                                u"IV. x"_s, u"文. x"_s, QString(QChar(0xD835)) + u". x"_s})
        EXPECT_EQ(parsed(line), Blocks{paragraph({line})}) << line.toStdString();
    EXPECT_EQ(parsed(u"1. "_s), Blocks{paragraph({u"1."_s})});
}

TEST(Numbered, anotherKindOfLineEndsTheList) {
    EXPECT_EQ(parsed(u"1. a\n2) b"_s), (Blocks{block::Numbered{{u"a"_s}}, paragraph({u"2) b"_s})}));
    EXPECT_EQ(parsed(u"1. a\n- b\n2. c"_s),
              (Blocks{block::Numbered{{u"a"_s}}, block::Bullet{{u"b"_s}}, block::Numbered{{u"c"_s}}}));
}

TEST(Table, theFirstRowIsTheHeaderAndSeparatorsFallOut) {
    EXPECT_EQ(only<block::Table>(u"| A | B |\n|---|---|\n| 1 | 2 |\n| :-: | - |\n|-- -:|"_s),
              (block::Table{{u"A"_s, u"B"_s}, {{u"1"_s, u"2"_s}}}));
}

TEST(Table, theFirstRowMayLookLikeASeparator) {
    EXPECT_EQ(only<block::Table>(u"|---|\n|a|"_s), (block::Table{{u"---"_s}, {{u"a"_s}}}));
}

TEST(Table, aRowWithAnEmptyCellIsNoSeparator) {
    EXPECT_EQ(only<block::Table>(u"|a|\n| --- | | --- |\n|"_s),
              (block::Table{{u"a"_s}, {{u"---"_s, u""_s, u"---"_s}, {u""_s}}}));
}

TEST(Table, aSeparatorHasNothingButItsThreeCharacters) {
    EXPECT_EQ(only<block::Table>(u"|a|\n|-=-|\n|-\t-|\n|\u2013|"_s).rows.size(), 3);
}

TEST(Table, oneBarIsTakenFromEachEndAndNothingIsEscaped) {
    EXPECT_EQ(only<block::Table>(u"|"_s), (block::Table{{u""_s}, {}}));
    EXPECT_EQ(only<block::Table>(u"||"_s), (block::Table{{u""_s}, {}}));
    EXPECT_EQ(only<block::Table>(u"|||"_s).header, (Texts{u""_s, u""_s}));
    EXPECT_EQ(only<block::Table>(u" | a \\| b | "_s).header, (Texts{u"a \\"_s, u"b"_s}));
    EXPECT_EQ(only<block::Table>(u"| a | b"_s).header, (Texts{u"a"_s, u"b"_s}));
}

TEST(Table, rowsMayDifferInLength) {
    EXPECT_EQ(only<block::Table>(u"|a|b|\n|1|\n|1|2|3|"_s),
              (block::Table{{u"a"_s, u"b"_s}, {{u"1"_s}, {u"1"_s, u"2"_s, u"3"_s}}}));
}

TEST(Table, aLineThatOnlyHoldsBarsFurtherOnIsText) {
    EXPECT_EQ(parsed(u"a | b\n--- | ---"_s), Blocks{paragraph({u"a | b"_s, u"--- | ---"_s})});
}

TEST(MarkdownBlock, itKeepsTheTextThatItShows) {
    QString text = u"- one\n- "_s + QString(100, u'x');
    const MarkdownBlock block = parseMarkdownBlocks(text).first();
    text.fill(u'y');
    text.clear();
    EXPECT_EQ(std::get<block::Bullet>(block.content).items, (Texts{u"one", QString(100, u'x')}));
}

TEST(MarkdownBlock, twoAreEqualIfTheyShowTheSame) {
    EXPECT_EQ(parseMarkdownBlocks(u"a\n# b"_s).last(), parseMarkdownBlocks(u"# b"_s).last());
    EXPECT_FALSE(parseMarkdownBlocks(u"# a"_s) == parseMarkdownBlocks(u"# b"_s));
    EXPECT_FALSE(parseMarkdownBlocks(u"# a"_s) == parseMarkdownBlocks(u"- a"_s));
}

TEST(JoinedLines, aLineFeedStandsBetweenEachTwo) {
    EXPECT_EQ(joinedLines({}), u""_s);
    EXPECT_EQ(joinedLines({u"a"}), u"a"_s);
    EXPECT_EQ(joinedLines({u"a", u"", u"b"}), u"a\n\nb"_s);
    EXPECT_EQ(joinedLines({u"", u"a"}), u"\na"_s);
}
