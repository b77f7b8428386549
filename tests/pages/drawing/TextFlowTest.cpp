#include "pages/drawing/TextFlow.h"

#include "pages/drawing/DrawingTheme.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double width = 200;
constexpr int spacing = 5;

class TextFlowTest : public testing::Test {
protected:
    TextFlowTest() { prepare(flow); }

    static void prepare(TextFlow &flow) {
        flow.setFormat(paperTheme().font(TextStep::body), spacing, Qt::AlignLeft);
        flow.setWidth(width);
    }

    static QImage picture(const TextFlow &flow, const TextSelection &selection = {}) {
        QImage image(int(width), int(flow.height()) + 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        flow.draw(painter, image.rect(), selection, Qt::yellow, Qt::black);
        return image;
    }

    double lineHeight() const { return flow.caretAt(0).height(); }

    TextFlow flow;
};

} // namespace

TEST_F(TextFlowTest, anEmptyTextIsOneLineHigh) {
    EXPECT_EQ(flow.height(), lineHeight());
    EXPECT_EQ(flow.usedWidth(), 0);
    EXPECT_EQ(flow.positionAt({50, 50}), 0);
}

TEST_F(TextFlowTest, linesStandApartByTheSpacing) {
    flow.setText(u"a\nb\n"_s);
    EXPECT_EQ(flow.height(), 3 * lineHeight() + 2 * spacing);
    EXPECT_EQ(flow.caretAt(2).top(), lineHeight() + spacing);
}

TEST_F(TextFlowTest, aWordWithoutABreakIsBrokenAnywhere) {
    flow.setText(QString(100, u'w'));
    EXPECT_GT(flow.height(), 3 * lineHeight());
    EXPECT_LE(flow.usedWidth(), width);
}

TEST_F(TextFlowTest, aTextFromTheRightStandsAtTheRight) {
    flow.setText(u"שלום"_s);
    EXPECT_GT(flow.caretAt(0).x(), width - 20);
}

TEST_F(TextFlowTest, growthChangesNothingAboveItsLastParagraph) {
    flow.setText(u"one\ntwo\nthr"_s);
    const double top = flow.caretAt(8).top();
    EXPECT_EQ(flow.setText(u"one\ntwo\nthree"_s), top);
    EXPECT_EQ(flow.setText(u"one\ntwo\nthree\nfour"_s), top);
    EXPECT_EQ(flow.setText(u"one\ntwo\nthree\nfour"_s), flow.height());
}

TEST_F(TextFlowTest, anyChangeGivesWhatLayingAnewGives) {
    QRandomGenerator random(11);
    const QString alphabet = u"ab c\nßшה漢 "_s;
    QString text;
    for (int round = 0; round < 300; ++round) {
        const int place = random.bounded(int(text.size()) + 1);
        text.remove(place, random.bounded(6));
        QString piece;
        for (int count = random.bounded(12); count > 0; --count)
            piece.append(alphabet.at(random.bounded(int(alphabet.size()))));
        text.insert(random.bounded(3) == 0 ? std::min<qsizetype>(place, text.size()) : text.size(), piece);
        flow.setText(text);
        TextFlow fresh;
        prepare(fresh);
        fresh.setText(text);
        ASSERT_EQ(flow.height(), fresh.height());
        ASSERT_EQ(flow.usedWidth(), fresh.usedWidth());
        const int position = random.bounded(int(text.size()) + 1);
        ASSERT_EQ(flow.caretAt(position), fresh.caretAt(position));
        if (round % 50 == 0) {
            ASSERT_EQ(picture(flow), picture(fresh));
        }
    }
}

TEST_F(TextFlowTest, aPointLeadsToTheNearestPlace) {
    flow.setText(u"first line\nsecond"_s);
    for (const int position : {0, 3, 10, 11, 14, 17})
        EXPECT_EQ(flow.positionAt(flow.caretAt(position).center()), position);
    EXPECT_EQ(flow.positionAt({-10, -10}), 0);
    EXPECT_EQ(flow.positionAt({1000, 1000}), 17);
}

TEST_F(TextFlowTest, theCaretMovesByCharactersWordsLinesAndToTheEnds) {
    using Move = TextFlow::Move;
    flow.setText(u"ab cd\nef"_s);
    EXPECT_EQ(flow.moved(0, Move::nextCharacter), 1);
    EXPECT_EQ(flow.moved(5, Move::nextCharacter), 6);
    EXPECT_EQ(flow.moved(6, Move::previousCharacter), 5);
    EXPECT_EQ(flow.moved(0, Move::previousCharacter), 0);
    EXPECT_EQ(flow.moved(8, Move::nextCharacter), 8);
    EXPECT_EQ(flow.moved(0, Move::nextWord), 3);
    EXPECT_EQ(flow.moved(5, Move::previousWord), 3);
    EXPECT_EQ(flow.moved(4, Move::lineStart), 0);
    EXPECT_EQ(flow.moved(1, Move::lineEnd), 5);
    EXPECT_EQ(flow.moved(0, Move::lineDown), 6);
    EXPECT_EQ(flow.moved(6, Move::lineUp), 0);
    EXPECT_EQ(flow.moved(0, Move::lineUp), 0);
    EXPECT_EQ(flow.moved(7, Move::lineDown), 7);
    EXPECT_EQ(flow.moved(3, Move::textStart), 0);
    EXPECT_EQ(flow.moved(3, Move::textEnd), 8);
}

TEST_F(TextFlowTest, aCharacterOfSeveralUnitsIsOneStep) {
    flow.setText(u"a\U0001F469\u200D\U0001F4BBb"_s);
    EXPECT_EQ(flow.moved(1, TextFlow::Move::nextCharacter), 6);
    EXPECT_EQ(flow.moved(6, TextFlow::Move::previousCharacter), 1);
}

TEST_F(TextFlowTest, wordsAndParagraphsAreFoundAroundAPlace) {
    flow.setText(u"one two\nthree"_s);
    EXPECT_EQ(flow.wordAt(5), (TextSelection{4, 7}));
    EXPECT_EQ(flow.wordAt(4), (TextSelection{4, 7}));
    EXPECT_EQ(flow.wordAt(13), (TextSelection{8, 13}));
    EXPECT_EQ(flow.paragraphAt(2), (TextSelection{0, 7}));
    EXPECT_EQ(flow.paragraphAt(9), (TextSelection{8, 13}));
}

TEST_F(TextFlowTest, whatIsSelectedHasItsOwnGround) {
    flow.setText(u"one\ntwo"_s);
    const QImage plain = picture(flow);
    const QImage selected = picture(flow, {5, 1});
    EXPECT_NE(plain, selected);
    EXPECT_EQ(selected.pixelColor(0, int(lineHeight()) + spacing + 2), QColor(Qt::yellow));
    EXPECT_EQ(selected.pixelColor(0, 2), plain.pixelColor(0, 2));
}
