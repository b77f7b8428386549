#include "pages/drawing/MarkdownView.h"

#include "pages/drawing/Drawn.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Move = SelectableText::Move;

constexpr double width = 320;

class MarkdownViewTest : public testing::Test {
protected:
    MarkdownViewTest() { view.layIn(width); }

    static QImage drawn(const MarkdownView &view, const QRectF &clip, const TextSelection &selection = {}) {
        QImage image(int(width) + 1, int(view.height()) + 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setClipRect(clip);
        view.draw(painter, clip, selection);
        return image;
    }
    static QImage drawn(const MarkdownView &view, const TextSelection &selection = {}) {
        return drawn(view, QRectF(0, 0, width, view.height()), selection);
    }

    QString all() const { return view.textBetween(0, view.length()); }

    MarkdownView view{paperTheme()};
};

} // namespace

TEST_F(MarkdownViewTest, anEmptyTextIsNothing) {
    view.setText(QString());
    EXPECT_EQ(view.height(), 0);
    EXPECT_EQ(view.length(), 0);
    EXPECT_EQ(view.moved(0, Move::lineDown), 0);
    EXPECT_EQ(view.positionAt({10, 10}), 0);
    EXPECT_EQ(view.targets().size(), 0);
    EXPECT_EQ(view.targetAt({1, 1}), std::nullopt);
    EXPECT_FALSE(view.isTextAt(0));
    drawn(view);
}

TEST_F(MarkdownViewTest, blocksStandApart) {
    view.setText(u"# One\ntwo\n\nthree\n---"_s);
    ASSERT_EQ(view.blockCount(), 4U);
    for (size_t index = 1; index < 4; ++index)
        EXPECT_EQ(view.topOf(index), view.topOf(index - 1) + view.block(index - 1).height() + 12);
    EXPECT_EQ(view.height(), view.topOf(3) + 1);
}

TEST_F(MarkdownViewTest, withoutAWidthNothingIsLaid) {
    MarkdownView fresh(paperTheme());
    fresh.setText(u"text"_s);
    EXPECT_EQ(fresh.blockCount(), 0U);
    EXPECT_GT(fresh.layIn(width), 0);
    EXPECT_EQ(fresh.blockCount(), 1U);
}

TEST_F(MarkdownViewTest, aTextThatComesWhileThereIsNoWidthIsShownLater) {
    view.setText(u"old\n\nolder"_s);
    view.layIn(0);
    EXPECT_EQ(view.setText(u"new"_s), 0);
    EXPECT_EQ(view.height(), 0);
    view.layIn(width);
    EXPECT_EQ(all(), u"new"_s);
    view.layIn(0);
    view.setTheme(darkTheme());
    EXPECT_EQ(all(), QString());
    view.layIn(width);
    EXPECT_EQ(all(), u"new"_s);
}

TEST_F(MarkdownViewTest, whatIsTheSameIsNotTouched) {
    view.setText(u"# One\ntwo\n\n- three"_s);
    const BlockView *first = &view.block(0);
    const BlockView *list = &view.block(2);
    const double end = view.height();
    EXPECT_EQ(view.setText(u"# One\ntwo\n\n- three\n- fo"_s), end);
    EXPECT_EQ(&view.block(0), first);
    EXPECT_EQ(&view.block(2), list);
}

TEST_F(MarkdownViewTest, aBlockOfAnotherKindTakesThePlace) {
    view.setText(u"one\n\n# two"_s);
    const double second = view.topOf(1);
    EXPECT_EQ(view.setText(u"one\n\n- two"_s), second);
    EXPECT_EQ(view.setText(u"one\n\n### two"_s), second);
    EXPECT_EQ(view.setText(u"one"_s), second);
    EXPECT_EQ(view.setText(u"- one"_s), 0);
    EXPECT_EQ(view.setText(u"- one"_s), view.height());
}

TEST_F(MarkdownViewTest, anyChangeGivesWhatANewViewGives) {
    QRandomGenerator random(5);
    const QStringList pieces{u"word "_s, u"\n"_s,   u"\n\n"_s,       u"# "_s,
                             u"- "_s,    u"1. "_s,  u"> "_s,         u"| "_s,
                             u"**"_s,    u"```"_s,  u"```chart\n"_s, u"a: 3\n"_s,
                             u"שלום "_s, u"漢字"_s, u"---\n"_s,      u"[a](http://b)"_s};
    QString text;
    for (int round = 0; round < 400; ++round) {
        if (random.bounded(8) == 0)
            text.truncate(random.bounded(int(text.size()) + 1));
        text += pieces.at(random.bounded(int(pieces.size())));
        const QImage before = drawn(view);
        const double changed = view.setText(text);
        MarkdownView fresh(paperTheme());
        fresh.layIn(width);
        fresh.setText(text);
        ASSERT_EQ(view.height(), fresh.height()) << text.toStdString();
        const QImage after = drawn(view);
        ASSERT_EQ(after, drawn(fresh)) << text.toStdString();
        ASSERT_EQ(all(), fresh.textBetween(0, fresh.length()));
        const int same = std::min({int(changed), before.height(), after.height()});
        ASSERT_EQ(before.copy(0, 0, before.width(), same), after.copy(0, 0, after.width(), same))
            << text.toStdString();
    }
}

TEST_F(MarkdownViewTest, onlyTheTextOfReadingCanBeSelected) {
    view.setText(u"# One\n| a |\n- two\n- three\n```\ncode\n```\n> four\n---\nfive"_s);
    EXPECT_EQ(all(), u"One\ntwo\nthree\nfour\nfive"_s);
    EXPECT_EQ(view.textBetween(1, 9), u"ne\ntwo\nt"_s);
    EXPECT_EQ(view.textBetween(3, 4), u"\n"_s);
}

TEST_F(MarkdownViewTest, theCaretGoesThroughAllBlocks) {
    view.setText(u"one\n\n| table |\n\n- two\n- three"_s);
    EXPECT_EQ(view.moved(3, Move::nextCharacter), 4);
    EXPECT_EQ(view.moved(4, Move::previousCharacter), 3);
    EXPECT_EQ(view.moved(0, Move::lineDown), 4);
    EXPECT_EQ(view.moved(4, Move::lineDown), 8);
    EXPECT_EQ(view.moved(8, Move::lineDown), 8);
    EXPECT_EQ(view.moved(8, Move::lineUp), 4);
    EXPECT_EQ(view.moved(0, Move::lineUp), 0);
    EXPECT_EQ(view.moved(5, Move::lineEnd), 7);
    EXPECT_EQ(view.moved(5, Move::textStart), 0);
    EXPECT_EQ(view.moved(5, Move::textEnd), 13);
    EXPECT_EQ(view.wordAt(10), (TextSelection{8, 13}));
    EXPECT_EQ(view.paragraphAt(5), (TextSelection{4, 7}));
    for (int position = 0; position <= view.length(); ++position)
        EXPECT_EQ(view.positionAt(view.caretAt(position).center()), position);
}

TEST_F(MarkdownViewTest, aSelectionGoesOverSeveralBlocks) {
    view.setText(u"▇▇▇▇\n\n▇▇▇▇"_s);
    const QImage picture = drawn(view, {2, 7});
    const auto groundAt = [&](int position) {
        const QRectF caret = view.caretAt(position);
        return picture.pixel(int(caret.left()) + 1, int(caret.top()));
    };
    EXPECT_EQ(groundAt(1), QColor(Qt::white).rgb());
    EXPECT_EQ(groundAt(2), view.theme().selection.rgb());
    EXPECT_EQ(groundAt(6), view.theme().selection.rgb());
    EXPECT_EQ(groundAt(7), QColor(Qt::white).rgb());
}

TEST_F(MarkdownViewTest, aPartIsDrawnAsInTheWhole) {
    view.setText(
        u"# One\ntwo `three` [four](http://example.org)\n- a\n- b\n\n| c | d |\n| e | f |\n```\ncode\n```\n> q"_s);
    const QImage whole = drawn(view);
    for (int top = 0; top < int(view.height()); top += 7) {
        const QRect part(0, top, int(width), 7);
        ASSERT_EQ(drawn(view, part).copy(part), whole.copy(part)) << top;
    }
}

TEST_F(MarkdownViewTest, targetsComeInTheOrderOfReading) {
    view.setText(
        u"[a](http://a.example) [b](mailto:b@example.org)\n```\ncode\n```\n- [c](https://c.example)"_s);
    const QList<Target> targets = view.targets();
    QStringList names;
    for (const Target &target : targets) {
        names.append(target.name);
        EXPECT_EQ(view.targetAt(target.areas.first().center()), target);
    }
    EXPECT_EQ(names, (QStringList{u"a"_s, u"b"_s, u"Copy"_s, u"c"_s}));
}

TEST_F(MarkdownViewTest, anotherThemeIsAnotherDrawing) {
    view.setText(u"one two three four five six seven eight nine ten"_s);
    const double height = view.height();
    DrawingTheme large = paperTheme();
    large.bodySize = 30;
    view.setTheme(large);
    EXPECT_GT(view.height(), height);
    EXPECT_EQ(all(), u"one two three four five six seven eight nine ten"_s);
}

TEST_F(MarkdownViewTest, inAnotherWidthAllIsLaidAnew) {
    view.setText(u"one two three four five six seven eight nine ten\n| a b c | d e f |\n- %1"_s.arg(
        u"many words "_s.repeated(20)));
    view.layIn(width / 2);
    MarkdownView fresh(paperTheme());
    fresh.layIn(width / 2);
    fresh.setText(view.text());
    EXPECT_EQ(view.height(), fresh.height());
    EXPECT_EQ(drawn(view), drawn(fresh));
}
