#include "pages/drawing/LongParagraph.h"

#include "pages/drawing/DrawingTheme.h"
#include "pages/drawing/TextFlow.h"

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double width = 400;
constexpr int spacing = 5;

void prepare(TextFlow &flow) {
    flow.setFormat(paperTheme().font(TextStep::body), spacing, Qt::AlignLeft);
    flow.setWidth(width);
}

/// A paragraph laid in one go, to compare with.
class Whole {
public:
    explicit Whole(const QString &text) : m_layout(text, paperTheme().font(TextStep::body)) {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setAlignment(text.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
        m_layout.setTextOption(option);
        double y = 0;
        m_layout.beginLayout();
        for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
            line.setLineWidth(width);
            line.setPosition({0, y});
            y += line.height() + spacing;
        }
        m_layout.endLayout();
        m_height = y - spacing;
    }

    const QTextLayout &layout() const { return m_layout; }
    double height() const { return m_height; }

    QTextLine lineAround(int position) const { return m_layout.lineForTextPosition(position); }

    QPointF caretAt(int position) const {
        const QTextLine line = lineAround(position);
        return {line.cursorToX(position), line.y()};
    }

private:
    QTextLayout m_layout;
    double m_height = 0;
};

/// A paragraph of words in a script, of several pieces' length.
QString paragraphOf(const QStringList &words, const QString &between, int seed = 3) {
    QRandomGenerator random(seed);
    QString text;
    while (text.size() < 8 * longParagraph::pieceReach)
        text += words.at(random.bounded(int(words.size()))) + between;
    return text;
}

QString plain() {
    return paragraphOf({u"some"_s, u"words,"_s, u"To"_s, u"affix"_s, u"(anyhow)"_s, u"1234"_s, u"fine."_s},
                       u" "_s);
}

void expectTheSameAsWhole(const QString &text) {
    TextFlow flow;
    prepare(flow);
    flow.setText(text);
    const Whole whole(text);
    ASSERT_EQ(flow.height(), whole.height());
    for (int position = 0; position <= text.size(); position += 3) {
        if (whole.layout().isValidCursorPosition(position)) {
            ASSERT_NEAR(flow.caretAt(position).x(), whole.caretAt(position).x(), 0.05) << position;
            ASSERT_EQ(flow.caretAt(position).y(), whole.caretAt(position).y()) << position;
        }
    }
    for (int line = 0; line < whole.layout().lineCount(); ++line) {
        const QTextLine expected = whole.layout().lineAt(line);
        const double y = expected.y() + 1;
        ASSERT_EQ(flow.positionAt({-1, y}), expected.xToCursor(-1)) << line;
        ASSERT_EQ(flow.positionAt({2 * width, y}), expected.xToCursor(2 * width)) << line;
        ASSERT_EQ(flow.moved(expected.textStart(), TextFlow::Move::lineStart), expected.textStart());
    }
}

void expectTheSameMoves(const QString &text) {
    TextFlow flow;
    prepare(flow);
    flow.setText(text);
    const QTextLayout characters(text);
    for (int position = 0; position < 3 * longParagraph::pieceReach; position += 3) {
        if (!characters.isValidCursorPosition(position))
            continue;
        using Move = TextFlow::Move;
        ASSERT_EQ(flow.moved(position, Move::nextCharacter), characters.nextCursorPosition(position));
        ASSERT_EQ(flow.moved(position, Move::previousCharacter), characters.previousCursorPosition(position));
        ASSERT_EQ(flow.moved(position, Move::nextWord),
                  characters.nextCursorPosition(position, QTextLayout::SkipWords));
        ASSERT_EQ(flow.moved(position, Move::previousWord),
                  characters.previousCursorPosition(position, QTextLayout::SkipWords));
    }
}

QImage picture(const Whole &whole, const TextSelection &selection) {
    QImage image(int(width), int(whole.height()) + 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QTextCharFormat format;
    format.setBackground(Qt::yellow);
    whole.layout().draw(&painter, {}, {{selection.start(), selection.end() - selection.start(), format}},
                        image.rect());
    return image;
}

} // namespace

TEST(LongParagraphTest, piecesAreLaidAsTheWholeWouldBe) {
    expectTheSameAsWhole(plain());
    expectTheSameAsWhole(paragraphOf({u"漢字"_s, u"かな"_s, u"カタ"_s, u"、"_s, u"。"_s}, {}));
    expectTheSameAsWhole(
        paragraphOf({u"e\u0301te\u0301"_s, u"\U0001F469\u200D\U0001F4BB"_s, u"слово"_s}, u" "_s));
    expectTheSameAsWhole(QString(3 * longParagraph::pieceReach, u'w'));
}

TEST(LongParagraphTest, textFromTheRightIsLaidInOneGo) {
    expectTheSameAsWhole(paragraphOf({u"שלום"_s, u"123"_s, u"word"_s}, u" "_s));
    expectTheSameAsWhole(plain() + paragraphOf({u"שלום"_s, u"123"_s, u"word"_s}, u" "_s));
    expectTheSameAsWhole(paragraphOf({u"12"_s, u"(3)"_s}, u" "_s) + u"שלום"_s);
    EXPECT_TRUE(longParagraph::runsFromTheLeft(u"a 1 漢 \U0001F469"));
    for (const QString &text : {u"aש"_s, u"a\u202E"_s, u"a\u0661"_s, u"a\U00010800"_s})
        EXPECT_FALSE(longParagraph::runsFromTheLeft(text));
}

TEST(LongParagraphTest, whatIsNotWrittenToBeReadIsLaidInPiecesAnyhow) {
    for (const QString &piece : {u"w"_s, u"="_s, u"`a` "_s, u"שלום "_s, u"12 "_s}) {
        const QString text = piece.repeated(5 * longParagraph::endless / 4 / piece.size());
        TextFlow flow;
        prepare(flow);
        flow.setText(text);
        const Whole whole(text);
        EXPECT_EQ(flow.height(), whole.height());
        for (int position = 0; position <= text.size(); position += 997)
            EXPECT_EQ(QPointF(flow.caretAt(position).topLeft()), whole.caretAt(position)) << position;
        EXPECT_GT(flow.setText(text.repeated(4)), 0);
        EXPECT_GT(flow.setText(text.repeated(4) + u'.'), flow.height() / 2);
    }
}

TEST(LongParagraphTest, theCaretMovesAsInTheWhole) {
    expectTheSameMoves(plain());
    expectTheSameMoves(paragraphOf({u"漢字"_s, u"かな"_s, u"カタ"_s, u"\U00020000"_s}, {}));
}

TEST(LongParagraphTest, aSelectionAcrossPiecesHasOneGround) {
    const QString text = plain();
    TextFlow flow;
    prepare(flow);
    flow.setText(text);
    const Whole whole(text);
    const int length = int(text.size());
    const double lastPieceTop = flow.setText(text + u'.');
    const int border = flow.positionAt({-1, lastPieceTop + 1});
    flow.setText(text);
    for (const TextSelection &selection :
         {TextSelection{0, 0}, {0, length}, {100, length - 100}, {100, border}, {border, length}}) {
        const QImage expected = picture(whole, selection);
        QImage image(expected.size(), expected.format());
        image.fill(Qt::white);
        QPainter painter(&image);
        flow.draw(painter, image.rect(), selection, Qt::yellow, Qt::black);
        painter.end();
        EXPECT_EQ(image, expected);
    }
}

TEST(LongParagraphTest, aParagraphIsFoundAcrossItsPieces) {
    const QString text = plain();
    const int length = int(text.size());
    TextFlow flow;
    prepare(flow);
    flow.setText(u"one\n"_s + text + u"\nthree"_s);
    EXPECT_EQ(flow.paragraphAt(2), (TextSelection{0, 3}));
    EXPECT_EQ(flow.paragraphAt(length / 2), (TextSelection{4, 4 + length}));
    EXPECT_EQ(flow.paragraphAt(length + 5).start(), length + 5);
}

TEST(LongParagraphTest, growthChangesNothingAboveItsLastPiece) {
    const QString text = plain();
    TextFlow flow;
    prepare(flow);
    flow.setText(text);
    EXPECT_GT(flow.setText(text + u"more"_s), flow.height() / 2);
}

TEST(LongParagraphTest, anyChangeGivesWhatLayingAnewGives) {
    QRandomGenerator random(5);
    const QStringList pieces = {u" "_s, u"word "_s, u"漢"_s, u"\n"_s, u"ש"_s, u" 12 "_s};
    QString text = plain();
    TextFlow flow;
    prepare(flow);
    flow.setText(text);
    for (int round = 0; round < 60; ++round) {
        const int place = round % 2 == 0 ? int(text.size()) : random.bounded(int(text.size()));
        text.remove(place, random.bounded(300));
        const bool isPlain = round < 20 || random.bounded(4) != 0;
        text.insert(place, isPlain ? QString(u"more words "_s).repeated(random.bounded(60))
                                   : pieces.at(random.bounded(int(pieces.size()))));
        flow.setText(text);
        TextFlow fresh;
        prepare(fresh);
        fresh.setText(text);
        ASSERT_EQ(flow.height(), fresh.height());
        for (int position = random.bounded(50); position <= text.size(); position += 97)
            ASSERT_EQ(flow.caretAt(position), fresh.caretAt(position));
    }
}
