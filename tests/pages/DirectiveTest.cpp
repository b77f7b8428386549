#include "pages/Directive.h"

#include "pages/Described.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

template<typename Block>
Block made(const QString &info, const QString &body) {
    const BlockContent block = directiveBlock(info, body);
    EXPECT_TRUE(std::holds_alternative<Block>(block)) << described({{{}, block}}).toStdString();
    return std::holds_alternative<Block>(block) ? std::get<Block>(block) : Block();
}

using Pairs = QList<TextPair>;
using Numbers = QList<LabelledNumber>;

} // namespace

TEST(Directive, everyNameMakesItsBlock) {
    made<block::Metric>(u"metric"_s, {});
    made<block::Chart>(u"chart"_s, {});
    made<block::Line>(u"line"_s, {});
    made<block::Donut>(u"donut"_s, {});
    made<block::Progress>(u"progress"_s, {});
    made<block::Callout>(u"callout"_s, {});
    made<block::Timeline>(u"timeline"_s, {});
    made<block::Sources>(u"sources"_s, {});
    made<block::Flow>(u"flow"_s, {});
    made<block::Compare>(u"compare"_s, {});
    made<block::Cards>(u"cards"_s, {});
    made<block::Spec>(u"spec"_s, {});
    made<block::Subtitle>(u"subtitle"_s, {});
    made<block::Divider>(u"divider"_s, {});
}

TEST(Directive, theNameIsTrimmedAndItsCaseDoesNotMatter) {
    made<block::Metric>(u"Metric"_s, {});
    made<block::Flow>(u"FLOW \t:x"_s, {});
    made<block::Code>(u"ſpec"_s, {});
}

TEST(Directive, theColorStandsBehindTheFirstColon) {
    EXPECT_EQ(made<block::Metric>(u"metric:GREEN"_s, {}).color, u"green"_s);
    EXPECT_EQ(made<block::Metric>(u"metric :  Light Green\t"_s, {}).color, u"light green"_s);
    EXPECT_EQ(made<block::Metric>(u"metric:a:B"_s, {}).color, u"a:b"_s);
    EXPECT_EQ(made<block::Metric>(u"metric:"_s, {}).color, u""_s);
    EXPECT_EQ(made<block::Metric>(u"metric"_s, {}).color, u""_s);
}

TEST(Directive, thoseWithoutAColorDropIt) {
    EXPECT_EQ(made<block::Subtitle>(u"subtitle:red"_s, u"a"_s), (block::Subtitle{u"a"_s}));
    EXPECT_EQ(made<block::Sources>(u"sources:red"_s, u"a"_s), (block::Sources{{u"a"_s}}));
    EXPECT_EQ(made<block::Spec>(u"spec:red"_s, u"a|b"_s), (block::Spec{{{u"a"_s, u"b"_s}}}));
}

TEST(Directive, everyOtherNameIsCodeWithItsInfoAsItStands) {
    EXPECT_EQ(made<block::Code>(u"Bash:x"_s, u" a\n"_s), (block::Code{u"Bash:x"_s, u" a\n"_s}));
    EXPECT_EQ(made<block::Code>({}, u"a"_s), (block::Code{{}, u"a"_s}));
    EXPECT_EQ(made<block::Code>(u":green"_s, u"a"_s), (block::Code{u":green"_s, u"a"_s}));
    EXPECT_EQ(made<block::Code>(u"metric x"_s, {}).language, u"metric x"_s);
    EXPECT_EQ(made<block::Code>(u"page"_s, {}).language, u"page"_s);
}

TEST(Directive, aBlockWhoseLinesAllFallOutStaysEmpty) {
    EXPECT_EQ(made<block::Chart>(u"chart:red"_s, u"no colon\n\n: 5\n"_s), (block::Chart{{}, u"red"_s}));
    EXPECT_EQ(made<block::Cards>(u"cards"_s, u"| right\n \n|"_s), block::Cards());
    EXPECT_EQ(made<block::Flow>(u"flow"_s, u"->\n -> -> "_s), block::Flow());
}

TEST(Metric, theFirstColonDividesLabelAndValue) {
    EXPECT_EQ(
        made<block::Metric>(u"metric"_s, u" Users : 1,200 \nTime: 10:30\nEmpty:\nnone\n : 7\n\nA:B"_s).items,
        (Pairs{{u"Users"_s, u"1,200"_s}, {u"Time"_s, u"10:30"_s}, {u"Empty"_s, u""_s}, {u"A"_s, u"B"_s}}));
}

TEST(Numbers, badOnesAreOneAndOnlyRowsWithoutALabelFallOut) {
    const Numbers expected{{u"Rent"_s, 1200}, {u"Food"_s, 30}, {u"Misc"_s, 1}};
    const QString body = u"Rent: $1,200\nFood: 30%\nMisc: n/a\noops\n: 4"_s;
    EXPECT_EQ(made<block::Chart>(u"chart"_s, body).items, expected);
    EXPECT_EQ(made<block::Line>(u"line"_s, body).items, expected);
    EXPECT_EQ(made<block::Donut>(u"donut"_s, body).items, expected);
    EXPECT_EQ(made<block::Progress>(u"progress"_s, body).items, expected);
}

TEST(Numbers, theyMayBeAnyDouble) {
    const Numbers items = made<block::Chart>(u"chart"_s, u"a: nan\nb: -inf\nc: 1e308\nd: -0"_s).items;
    ASSERT_EQ(items.size(), 4);
    EXPECT_TRUE(std::isnan(items[0].value));
    EXPECT_EQ(items[1].value, -INFINITY);
    EXPECT_EQ(items[2].value, 1e308);
    EXPECT_TRUE(items[3].value == 0 && std::signbit(items[3].value));
}

TEST(Callout, itsTextIsTrimmedAsAWhole) {
    EXPECT_EQ(made<block::Callout>(u"callout:Warning"_s, u"\n\r\n  Mind\n\n  the gap \n\u2028"_s),
              (block::Callout{u"Mind\n\n  the gap"_s, u"warning"_s}));
    EXPECT_EQ(made<block::Subtitle>(u"subtitle"_s, u" \na\nb\n"_s).text, u"a\nb"_s);
}

TEST(PlainLines, emptyOnesAreDropped) {
    const Texts expected{u"a"_s, u"b c"_s, u"\r"_s};
    EXPECT_EQ(made<block::Timeline>(u"timeline:teal"_s, u" a \n\n\t\n b c\n\r"_s),
              (block::Timeline{expected, u"teal"_s}));
    EXPECT_EQ(made<block::Sources>(u"sources"_s, u" a \n\n\t\n b c\n\r"_s).items, expected);
}

TEST(Flow, linesAndArrowsGiveOneListWithoutRepeats) {
    EXPECT_EQ(made<block::Flow>(u"flow"_s, u"A -> A -> B"_s).steps, (Texts{u"A"_s, u"B"_s}));
    EXPECT_EQ(made<block::Flow>(u"flow:pink"_s, u"A -> B\nB->C\n\n-> D ->-> E\nF"_s),
              (block::Flow{{u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"F"_s}, u"pink"_s}));
    EXPECT_EQ(made<block::Flow>(u"flow"_s, u"A -> B -> A --> a - > b"_s).steps,
              (Texts{u"A"_s, u"B"_s, u"A -"_s, u"a - > b"_s}));
}

TEST(Pairs, theFirstPipeDividesAndTheSecondStaysWithTheRight) {
    const Pairs expected{{u"Fast"_s, u"| Slow"_s}, {u"a"_s, u"b"_s}, {u"c"_s, u"d | e"_s}, {u"f"_s, u""_s}};
    const QString body = u"Fast || Slow\n a | b \nc | d | e\nf\n | g\n\n|"_s;
    EXPECT_EQ(made<block::Compare>(u"compare:red"_s, body), (block::Compare{expected, u"red"_s}));
    EXPECT_EQ(made<block::Cards>(u"cards"_s, body), (block::Cards{expected, {}}));
    EXPECT_EQ(made<block::Spec>(u"spec"_s, body), (block::Spec{expected}));
}

TEST(Divider, itsBodyDoesNotMatter) {
    EXPECT_EQ(made<block::Divider>(u"divider:Teal"_s, u"a\nb"_s), (block::Divider{u"teal"_s}));
}
