#include "pages/drawing/Figure.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double width = 300;

class ProseViewTest : public testing::Test {
protected:
    BlockView &shown(const QString &text) {
        view = viewOf(text, theme, width);
        return *view;
    }

    DrawingTheme theme = paperTheme();
    std::unique_ptr<BlockView> view;
};

} // namespace

TEST_F(ProseViewTest, aParagraphIsItsLinesWithoutTheMarks) {
    const BlockView &paragraph = shown(u"one **two**\n`three` [four](https://example.org)"_s);
    EXPECT_EQ(paragraph.textBetween(0, paragraph.length()), u"one two\nthree four"_s);
    EXPECT_GT(paragraph.height(), 2 * theme.bodySize);
}

TEST_F(ProseViewTest, headingsHaveTwoSizes) {
    const double first = shown(u"# A"_s).height();
    EXPECT_EQ(shown(u"## A"_s).height(), first);
    const double third = shown(u"### A"_s).height();
    EXPECT_LT(third, first);
    EXPECT_EQ(shown(u"###### A"_s).height(), third);
}

TEST_F(ProseViewTest, whatIsDrawnStaysInside) {
    for (const QString &text :
         {u"gÅ"_s, u"שלום עולם"_s, u"漢字かな交じり文"_s, u"👩‍💻 a\u0301\u0323"_s,
          u"**wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww**"_s}) {
        const BlockView &paragraph = shown(text);
        const QRect ink = inkIn(pictureOf(paragraph));
        EXPECT_FALSE(ink.isNull()) << text.toStdString();
        EXPECT_TRUE(QRect(-1, -1, int(width) + 2, int(paragraph.height()) + 2).contains(ink))
            << text.toStdString();
    }
}

TEST_F(ProseViewTest, aSubtitleStandsBack) {
    const QImage picture = pictureOf(shown(u"```subtitle\n▇▇▇▇\n```"_s));
    const QRect ink = inkIn(picture);
    EXPECT_EQ(colorAt(picture, ink.left() + 5, ink.center().y()), theme.secondary.rgb());
}

TEST_F(ProseViewTest, growthChangesOnlyTheLastLine) {
    BlockView &paragraph = shown(u"one\ntwo\nthr"_s);
    const double lastLine = paragraph.caretAt(8).top();
    EXPECT_EQ(paragraph.setBlock(blockOf(u"one\ntwo\nthree"_s).content), lastLine);
    const double height = paragraph.height();
    EXPECT_EQ(paragraph.setBlock(blockOf(u"one\ntwo\nthree"_s).content), height);
}

TEST_F(ProseViewTest, boldLettersAreAChange) {
    BlockView &paragraph = shown(u"one\ntwo three"_s);
    EXPECT_LT(paragraph.setBlock(blockOf(u"one\ntwo **three**"_s).content), paragraph.height());
}

TEST_F(ProseViewTest, aLinkIsATargetWhereItStands) {
    const BlockView &paragraph = shown(u"see [the page](https://example.org/a) now"_s);
    ASSERT_EQ(paragraph.targets().size(), 1);
    const Target link = paragraph.targets().first();
    EXPECT_EQ(link.name, u"the page"_s);
    EXPECT_EQ(link.address, QUrl(u"https://example.org/a"_s));
    EXPECT_EQ(link.areas.first().left(), paragraph.caretAt(4).left());
    EXPECT_EQ(link.areas.first().right(), paragraph.caretAt(12).left());
    EXPECT_EQ(paragraph.targetAt(link.areas.first().center()), link);
    EXPECT_EQ(paragraph.targetAt({2, 5}), std::nullopt);
}

TEST_F(ProseViewTest, aLinkOverTwoLinesIsOneTarget) {
    const BlockView &paragraph = shown(u"[%1](https://example.org)"_s.arg(u"word "_s.repeated(20).trimmed()));
    ASSERT_EQ(paragraph.targets().size(), 1);
    EXPECT_GT(paragraph.targets().first().areas.size(), 1);
}

TEST_F(ProseViewTest, onlyPagesAndLettersCanBeFollowed) {
    for (const QString &address :
         {u"https://example.org"_s, u"HTTP://example.org"_s, u"mailto:a@example.org"_s})
        EXPECT_EQ(shown(u"[a](%1)"_s.arg(address)).targets().size(), 1) << address.toStdString();
    for (const QString &address : {u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"/etc/passwd"_s,
                                   u"ssh://example.org"_s, u"https:"_s, u"data:text/html,a"_s}) {
        const BlockView &paragraph = shown(u"[a](%1)"_s.arg(address));
        EXPECT_EQ(paragraph.targets().size(), 0) << address.toStdString();
        EXPECT_EQ(paragraph.textBetween(0, paragraph.length()), u"a"_s);
    }
}

TEST_F(ProseViewTest, whatIsSelectedHasItsOwnGround) {
    const QImage picture = pictureOf(shown(u"one two"_s), Qt::white, {4, 7});
    EXPECT_EQ(colorAt(picture, int(view->caretAt(4).left()) + 1, 1), theme.selection.rgb());
    EXPECT_EQ(colorAt(picture, 1, 1), QColor(Qt::white).rgb());
}

TEST_F(ProseViewTest, aScreenReaderHearsTheKindTheTextAndTheLinks) {
    const SpokenPart paragraph = shown(u"see [it](https://example.org)"_s).spoken();
    EXPECT_EQ(paragraph.role, QAccessible::Paragraph);
    EXPECT_EQ(paragraph.name, u"see it"_s);
    ASSERT_EQ(paragraph.parts.size(), 1U);
    EXPECT_EQ(paragraph.parts[0].role, QAccessible::Link);
    EXPECT_EQ(paragraph.parts[0].name, u"it"_s);
    EXPECT_TRUE(paragraph.parts[0].target.has_value());
    EXPECT_EQ(shown(u"## It"_s).spoken().role, QAccessible::Heading);
}

TEST_F(ProseViewTest, aLinkWithMarksInItIsOne) {
    const QList<Target> targets =
        shown(u"[a **b** c](https://x.org/) [d](https://x.org/) [e](https://y.org/)"_s).targets();
    ASSERT_EQ(targets.size(), 3);
    EXPECT_EQ(targets[0].name, u"a b c"_s);
    EXPECT_EQ(targets[0].areas.size(), 1);
    EXPECT_EQ(targets[1].name, u"d"_s);
}

TEST_F(ProseViewTest, aLinkThatCoversNothingIsNone) {
    const BlockView &paragraph = shown(u"a [\n](https://x.org/) b [c\n](https://y.org/)"_s);
    ASSERT_EQ(paragraph.targets().size(), 1);
    EXPECT_EQ(paragraph.targets()[0].address, QUrl(u"https://y.org/"_s));
    EXPECT_EQ(paragraph.spoken().parts.size(), 1U);
}

TEST_F(ProseViewTest, aLinkIsWhereItIsDrawnThoughTheDirectionChanges) {
    for (const QString &text :
         {u"x [abc אבאב](https://a.org) גדגד"_s, u"x [abc](https://a.org) אבאב"_s,
          u"אב [גד abc](https://a.org) xyz"_s, u"[אבאב](https://a.org) גדגד"_s,
          u"שלום [עולם](https://a.org)"_s, u"x גד [אב 12 abc](https://a.org) **דג** y"_s}) {
        const BlockView &paragraph = shown(text);
        const QImage picture = pictureOf(paragraph);
        ASSERT_EQ(paragraph.targets().size(), 1);
        const QList<QRectF> areas = paragraph.targets()[0].areas;
        for (int x = 0; x < int(width); ++x) {
            const QRectF column(x, 0, 1, paragraph.height());
            const bool isDrawn = countInColumn(picture, x, theme.link.rgb()) > 0;
            const auto covers = [&](double by) {
                return std::any_of(areas.begin(), areas.end(), [&](const QRectF &area) {
                    return area.adjusted(-by, 0, by, 0).intersects(column);
                });
            };
            ASSERT_TRUE(isDrawn ? covers(1) : !covers(-1)) << text.toStdString() << " at " << x;
        }
        for (const QRectF &area : areas)
            EXPECT_EQ(paragraph.targetAt(area.center()), paragraph.targets()[0]) << text.toStdString();
    }
}
