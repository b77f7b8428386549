#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 312;
constexpr int cardWidth = 150;

class CardsViewTest : public Figure {
protected:
    BlockView &cards(const QStringList &rows, const QString &color = {}) {
        return shown(fence(u"cards"_s + color, rows), width);
    }
};

} // namespace

TEST_F(CardsViewTest, threeCardsAreTwoRowsAndTheLastIsHalfWide) {
    const double row = cards({u"a | b"_s}).height();
    cards({u"a | b"_s, u"c | d"_s, u"e | f"_s});
    EXPECT_EQ(view->height(), 2 * row + 12);
    const QRgb bar = on(theme.shade(0.2));
    EXPECT_EQ(countInRow(picture(), 0, bar), 2 * cardWidth);
    EXPECT_EQ(countInRow(picture(), int(row) + 12, bar), cardWidth);
    EXPECT_EQ(colorAt(picture(), 0, int(row) + 12), bar);
}

TEST_F(CardsViewTest, theBarIsTwoHighInTheTint) {
    cards({u"a | b"_s, u"c | d"_s}, u":amber"_s);
    const QRgb bar = on(faded(QColor::fromRgbF(0.82F, 0.55F, 0.05F), 0.7));
    EXPECT_EQ(countInRow(picture(), 1, bar), 2 * cardWidth);
    EXPECT_EQ(countInRow(picture(), 2, bare()), picture().width());
    EXPECT_EQ(colorAt(picture(), cardWidth + 12, 0), bar);
    EXPECT_EQ(colorAt(picture(), cardWidth + 11, 0), bare());
}

TEST_F(CardsViewTest, aCardWithoutATextEndsWithItsTitle) {
    const double titleHeight = TextPart(theme, {.step = TextStep::headline}).height();
    const double textHeight = TextPart(theme, {.step = TextStep::callout}).height();
    EXPECT_EQ(cards({u"a"_s}).height(), 2 + 8 + titleHeight);
    EXPECT_EQ(cards({u"a | b"_s}).height(), 2 + 8 + titleHeight + 8 + textHeight);
    EXPECT_EQ(view->spoken().parts[0].name, u"a: b"_s);
}

TEST_F(CardsViewTest, oneMoreCardChangesItsOwnRow) {
    const double row = cards({u"a | b"_s}).height();
    EXPECT_EQ(change(fence(u"cards"_s, {u"a | b"_s, u"c | d"_s})), 0);
    EXPECT_EQ(change(fence(u"cards"_s, {u"a | b"_s, u"c | d"_s, u"e | f"_s})), row);
}
