#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 400;

class SpecViewTest : public Figure {
protected:
    BlockView &spec(const QStringList &rows) { return shown(fence(u"spec"_s, rows), width); }

    double valueHeight() const { return TextPart(theme, {.step = TextStep::callout}).height(); }
};

} // namespace

TEST_F(SpecViewTest, valuesStandBesideAColumnOfKeys) {
    spec({u"key | value"_s});
    EXPECT_EQ(view->caretAt(0).topLeft(), QPointF(176, 10));
    EXPECT_EQ(view->height(), valueHeight() + 20);
    EXPECT_EQ(view->textBetween(0, view->length()), u"value"_s);
}

TEST_F(SpecViewTest, aHairlineStandsBetweenTwoRows) {
    spec({u"key | value"_s, u"other | value"_s});
    const int row = int(valueHeight()) + 20;
    EXPECT_EQ(view->height(), 2 * row + 1);
    EXPECT_EQ(countInRow(picture(), row, on(theme.shade(0.12))), width);
    EXPECT_EQ(countInRow(picture(), row - 1, bare()), picture().width());
    EXPECT_EQ(countInRow(picture(), int(view->height()) - 1, bare()), picture().width());
}

TEST_F(SpecViewTest, aLongKeyStaysInItsColumn) {
    spec({u"%1 | value"_s.arg(u"word "_s.repeated(12))});
    const QImage drawn = picture();
    for (int x = 160; x < 176; ++x)
        EXPECT_EQ(countInColumn(drawn, x, bare()), drawn.height()) << x;
    EXPECT_GT(view->height(), valueHeight() + 30);
}

TEST_F(SpecViewTest, aScreenReaderHearsKeyAndValue) {
    spec({u"Size | [big](https://example.org)"_s, u"None"_s});
    const SpokenPart spoken = view->spoken();
    ASSERT_EQ(spoken.parts.size(), 2U);
    EXPECT_EQ(spoken.parts[0].name, u"SIZE: big"_s);
    EXPECT_EQ(spoken.parts[0].parts.size(), 1U);
    EXPECT_EQ(spoken.parts[1].name, u"NONE"_s);
}

TEST_F(SpecViewTest, oneMoreRowChangesNothingAboveTheLastOne) {
    spec({u"a | b"_s, u"c | d"_s});
    EXPECT_EQ(change(fence(u"spec"_s, {u"a | b"_s, u"c | d"_s, u"e | f"_s})), valueHeight() + 21);
}
