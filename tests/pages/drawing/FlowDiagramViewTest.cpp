#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 300;

class FlowDiagramViewTest : public Figure {
protected:
    BlockView &flow(const QString &steps, const QString &color = {}) {
        return shown(fence(u"flow"_s + color, {steps}), width);
    }

    int boxHeight() { return int(flow(u"a"_s).height()); }
};

} // namespace

TEST_F(FlowDiagramViewTest, aStepIsABoxWithRoundCornersAndNoFill) {
    flow(u"one"_s);
    const QImage drawn = picture();
    const int height = int(view->height());
    const QRgb stroke = on(theme.shade(0.35));
    EXPECT_EQ(inkIn(drawn), QRect(0, 0, width, height));
    EXPECT_EQ(colorAt(drawn, width / 2, 0), stroke);
    EXPECT_EQ(colorAt(drawn, width / 2, height - 1), stroke);
    EXPECT_EQ(colorAt(drawn, 0, height / 2), stroke);
    EXPECT_EQ(colorAt(drawn, width / 2, 2), bare());
    EXPECT_EQ(colorAt(drawn, 0, 0), bare());
    EXPECT_EQ(colorAt(drawn, 1, 1), bare());
    EXPECT_EQ(countInRow(drawn, 0, stroke), width - 18);
}

TEST_F(FlowDiagramViewTest, theTextStandsFourteenAndTenInside) {
    flow(u"one"_s);
    EXPECT_EQ(view->caretAt(0).topLeft(), QPointF(14, 10));
    EXPECT_EQ(view->height(), view->caretAt(0).height() + 20);
}

TEST_F(FlowDiagramViewTest, anArrowStandsBetweenTwoStepsAndNoneAfterTheLast) {
    const int box = boxHeight();
    flow(u"one -> two"_s);
    const QImage drawn = picture();
    EXPECT_EQ(view->height(), 2 * box + 18);
    const QImage between = drawn.copy(0, pictureMargin + box, drawn.width(), 18);
    const QRect arrow = inkIn(between).translated(0, pictureMargin);
    EXPECT_GE(arrow.left(), 20);
    EXPECT_LE(arrow.right(), 29);
    EXPECT_GE(arrow.top(), 4);
    EXPECT_LE(arrow.bottom(), 13);
    EXPECT_GE(arrow.height(), 9);
    EXPECT_EQ(inkIn(drawn).bottom(), 2 * box + 17);
}

TEST_F(FlowDiagramViewTest, theColourIsThatOfBoxesAndArrows) {
    const int box = boxHeight();
    flow(u"one -> two"_s, u":blue"_s);
    const QColor blue = QColor::fromRgbF(0.13F, 0.42F, 0.86F);
    EXPECT_EQ(colorAt(picture(), width / 2, 0), on(faded(blue, 0.35)));
    const QColor arrow(colorAt(picture(), 25, box + 12));
    EXPECT_GT(arrow.blue(), arrow.red() + 40);
}

TEST_F(FlowDiagramViewTest, stepsThatRepeatAreOne) {
    flow(u"A -> A -> B"_s);
    EXPECT_EQ(view->textBetween(0, view->length()), u"A\nB"_s);
    EXPECT_EQ(flow(u"->"_s).height(), 0);
}

TEST_F(FlowDiagramViewTest, oneMoreStepChangesNothingAboveTheLastOne) {
    const int box = boxHeight();
    flow(u"one -> two"_s);
    EXPECT_EQ(change(fence(u"flow"_s, {u"one -> two -> three"_s})), box + 18);
}
