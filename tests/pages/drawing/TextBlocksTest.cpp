#include "pages/drawing/Drawn.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Lists, quotes, code, and what separates blocks.

namespace {

constexpr double width = 300;

class TextBlocksTest : public testing::Test {
protected:
    BlockView &shown(const QString &text) {
        view = viewOf(text, theme, width);
        return *view;
    }
    double change(const QString &text) { return view->setBlock(blockOf(text).content); }

    const DrawingTheme theme = paperTheme();
    std::unique_ptr<BlockView> view;
};

} // namespace

TEST_F(TextBlocksTest, itemsStandApartAndAreOneTextEach) {
    const BlockView &list = shown(u"- one\n- **two**\n- three"_s);
    EXPECT_EQ(list.textBetween(0, list.length()), u"one\ntwo\nthree"_s);
    const double height = shown(u"- one"_s).height();
    EXPECT_EQ(shown(u"- one\n- two\n- three"_s).height(), 3 * height + 2 * 6);
    EXPECT_EQ(view->caretAt(4).top(), height + 6);
}

TEST_F(TextBlocksTest, markersStandBeforeTheItems) {
    const BlockView &list = shown(u"- one"_s);
    const QRect ink = inkIn(pictureOf(list));
    EXPECT_LT(ink.left(), list.caretAt(0).left() - 4);
    EXPECT_GE(ink.left(), 0);
}

TEST_F(TextBlocksTest, anItemFromTheRightHasItsMarkerThere) {
    const BlockView &list = shown(u"- שלום"_s);
    const QRect ink = inkIn(pictureOf(list));
    EXPECT_GT(ink.left(), width / 2);
    EXPECT_GT(ink.right(), list.caretAt(0).left() + 4);
    EXPECT_LE(ink.right(), width);
}

TEST_F(TextBlocksTest, numbersAreCountedAndEndInLine) {
    QString items;
    for (int item = 0; item < 10; ++item)
        items += u"7. i\n"_s;
    const BlockView &list = shown(items);
    const SpokenPart spoken = list.spoken();
    ASSERT_EQ(spoken.parts.size(), 10U);
    EXPECT_EQ(spoken.parts[0].name, u"1. i"_s);
    EXPECT_EQ(spoken.parts[9].name, u"10. i"_s);
    const QImage picture = pictureOf(list);
    const double indent = list.caretAt(0).left();
    const auto endOfMarker = [&](int item) {
        const QRectF line = list.caretAt(2 * item);
        const QRect beside(pictureMargin, pictureMargin + int(line.top()), int(indent) - 1,
                           int(line.height()));
        QImage part(picture.size(), picture.format());
        part.fill(Qt::white);
        QPainter(&part).drawImage(beside.topLeft(), picture, beside);
        return inkIn(part).right();
    };
    EXPECT_EQ(endOfMarker(0), endOfMarker(9));
}

TEST_F(TextBlocksTest, aGrowingListChangesAtItsLastItem) {
    shown(u"- one\n- two\n- thr"_s);
    const double third = view->caretAt(8).top();
    EXPECT_EQ(change(u"- one\n- two\n- three"_s), third);
    const double end = view->height();
    EXPECT_EQ(change(u"- one\n- two\n- three\n- four"_s), end);
    EXPECT_EQ(change(u"- one\n- two\n- three\n- four"_s), view->height());
    EXPECT_EQ(change(u"- one\n- too"_s), view->caretAt(4).top());
    EXPECT_EQ(view->textBetween(0, view->length()), u"one\ntoo"_s);
}

TEST_F(TextBlocksTest, theTenthItemMovesAll) {
    QString items = u"1. i\n"_s.repeated(9);
    shown(items);
    const double before = view->caretAt(0).left();
    EXPECT_EQ(change(items + u"1. i"_s), 0);
    EXPECT_GT(view->caretAt(0).left(), before);
}

TEST_F(TextBlocksTest, aQuoteStandsBesideItsBar) {
    const BlockView &quote = shown(u"> one\n>\n> two"_s);
    EXPECT_EQ(quote.textBetween(0, quote.length()), u"one\n\ntwo"_s);
    EXPECT_EQ(quote.caretAt(0).left(), 15);
    const QImage picture = pictureOf(quote);
    const QRgb bar = laidOn(Qt::white, theme.shade(0.75));
    for (const int y : {0, int(quote.height()) / 2, int(quote.height()) - 1}) {
        EXPECT_EQ(colorAt(picture, 0, y), bar);
        EXPECT_EQ(colorAt(picture, 2, y), bar);
        EXPECT_EQ(colorAt(picture, 3, y), QColor(Qt::white).rgb());
    }
}

TEST_F(TextBlocksTest, aQuoteFromTheRightHasItsBarThere) {
    const QImage picture = pictureOf(shown(u"> שלום"_s));
    EXPECT_EQ(colorAt(picture, int(width) - 1, 5), laidOn(Qt::white, theme.shade(0.75)));
    EXPECT_EQ(colorAt(picture, 0, 5), QColor(Qt::white).rgb());
}

TEST_F(TextBlocksTest, aRuleIsAHairline) {
    const BlockView &rule = shown(u"---"_s);
    EXPECT_EQ(rule.height(), 1);
    EXPECT_EQ(rule.length(), 0);
    EXPECT_EQ(inkIn(pictureOf(rule)), QRect(0, 0, int(width), 1));
}

TEST_F(TextBlocksTest, aDividerIsAShortBarWithSpaceAround) {
    for (const auto &[text, color] : {std::pair{u"```divider:teal\n```"_s, theme.tint(u"teal", {})},
                                      std::pair{u"```divider\n```"_s, theme.shade(0.75)},
                                      std::pair{u"```divider:none\n```"_s, theme.shade(0.75)}}) {
        const BlockView &divider = shown(text);
        EXPECT_EQ(divider.height(), 15);
        const QImage picture = pictureOf(divider);
        EXPECT_EQ(inkIn(picture), QRect(0, 6, 36, 3));
        EXPECT_EQ(colorAt(picture, 10, 7), laidOn(Qt::white, color));
    }
}

TEST_F(TextBlocksTest, codeCanBeCopiedAsItWasWritten) {
    const BlockView &code = shown(u"```cpp\n\n  int a;\n\n```"_s);
    ASSERT_EQ(code.targets().size(), 1);
    const Target copy = code.targets().first();
    EXPECT_EQ(copy.kind, Target::Kind::copy);
    EXPECT_EQ(copy.name, u"Copy"_s);
    EXPECT_EQ(copy.copied, u"\n  int a;\n"_s);
    EXPECT_EQ(code.targetAt(copy.areas.first().center()), copy);
    EXPECT_TRUE(QRectF(0, 0, width, code.height()).contains(copy.areas.first()));
    EXPECT_EQ(code.height(), viewOf(u"```cpp\n  int a;\n```"_s, theme, width)->height());
    EXPECT_EQ(code.length(), 0);
}

TEST_F(TextBlocksTest, codeIsShownWithoutReadingIt) {
    const SpokenPart code = shown(u"```\na*b*c [x](https://example.org)\n```"_s).spoken();
    EXPECT_EQ(code.name, u"Code"_s);
    ASSERT_EQ(code.parts.size(), 2U);
    EXPECT_EQ(code.parts[0].role, QAccessible::Button);
    EXPECT_EQ(code.parts[1].name, u"a*b*c [x](https://example.org)"_s);
    EXPECT_TRUE(code.parts[1].parts.empty());
}

TEST_F(TextBlocksTest, codeStaysInItsBox) {
    for (const QString &text : {QString(400, u'w'), u"\t\t\tdeep"_s, u"# שלום"_s, u"漢字"_s.repeated(60)}) {
        const BlockView &code = shown(u"```python\n%1\n```"_s.arg(text));
        const QRect ink = inkIn(pictureOf(code));
        EXPECT_EQ(ink, QRect(0, 0, int(width), int(code.height()))) << text.toStdString();
    }
}

TEST_F(TextBlocksTest, growingCodeChangesFromItsLastLine) {
    shown(u"```\none\ntwo\nthr"_s);
    const double height = view->height();
    const double changed = change(u"```\none\ntwo\nthree"_s);
    EXPECT_GT(changed, height / 2);
    EXPECT_LT(changed, height);
    EXPECT_EQ(change(u"```py\none\ntwo\nthree"_s), 0);
}

TEST_F(TextBlocksTest, nothingIsTooNarrow) {
    for (const QString &text :
         {u"- a b"_s, u"1. a b"_s, u"> a b"_s, u"```cpp\na b\n```"_s, u"| a | b |\n| c |"_s, u"a b"_s}) {
        const auto narrow = viewOf(text, theme, 0);
        EXPECT_GT(narrow->height(), 0);
        pictureOf(*narrow);
    }
}

TEST_F(TextBlocksTest, sourcesAreCountedInBrackets) {
    const BlockView &list = shown(u"```sources\n[The law](https://example.org)\nanother\n```"_s);
    EXPECT_EQ(list.textBetween(0, list.length()), u"The law\nanother"_s);
    EXPECT_EQ(list.spoken().parts[0].name, u"[1] The law"_s);
    EXPECT_EQ(list.spoken().parts[1].name, u"[2] another"_s);
    ASSERT_EQ(list.targets().size(), 1);
    EXPECT_EQ(list.targets().first().address, QUrl(u"https://example.org"_s));
    EXPECT_EQ(list.caretAt(8).top(), viewOf(u"```sources\none"_s, theme, width)->height() + 6);
}

TEST_F(TextBlocksTest, aPictureMadeSmallerKeepsItsHairlines) {
    for (const QString &text : {u"---"_s, u"```divider\n```"_s, u"> a"_s, u"| a |\n| b |"_s}) {
        shown(text);
        for (const double shift : {0.0, 0.2, 0.4, 0.6, 0.8}) {
            QImage small(int(width), 80, QImage::Format_RGB32);
            small.fill(Qt::white);
            QPainter painter(&small);
            painter.translate(0, shift);
            painter.scale(0.4, 0.4);
            view->draw(painter, QRectF(0, 0, width, view->height()));
            painter.end();
            const QRect ink = inkIn(small).translated(pictureMargin, pictureMargin);
            EXPECT_NEAR(ink.bottom() + 1, 0.4 * inkIn(pictureOf(*view)).bottom() + shift, 1.5)
                << text.toStdString() << shift;
        }
    }
}

TEST_F(TextBlocksTest, aQuoteThatTurnsChangesAsAWhole) {
    shown(u"> 12"_s);
    EXPECT_EQ(change(u"> 12\n> שלום"_s), 0);
    EXPECT_EQ(pictureOf(*view), pictureOf(*viewOf(u"> 12\n> שלום"_s, theme, width)));
}

TEST_F(TextBlocksTest, codeIsDrawnInTheOrderOfItsCharacters) {
    const QString code = u"if (a) \u202E{ /* } \u2066b\u2069 */"_s;
    const BlockView &block = shown(u"```\n%1\n```"_s.arg(code));
    EXPECT_EQ(block.targets()[0].copied, code);
    EXPECT_EQ(block.spoken().parts[1].name, code);
    const QString marked = u"if (a) \uFFFD{ /* } \uFFFDb\uFFFD */"_s;
    EXPECT_EQ(pictureOf(block), pictureOf(*viewOf(u"```\n%1\n```"_s.arg(marked), theme, width)));
}

TEST_F(TextBlocksTest, codeInALineIsDrawnInTheOrderOfItsCharacters) {
    const QString line = u"a `b \u202Ecd` \u2067e\u2069"_s;
    const BlockView &paragraph = shown(line);
    EXPECT_EQ(paragraph.textBetween(0, paragraph.length()), u"a b \u202Ecd \u2067e\u2069"_s);
    const QString marked = u"a `b \uFFFDcd` \u2067e\u2069"_s;
    EXPECT_EQ(pictureOf(paragraph), pictureOf(*viewOf(marked, theme, width)));
}
