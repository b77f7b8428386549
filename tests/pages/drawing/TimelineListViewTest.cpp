#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 300;

class TimelineListViewTest : public Figure {
protected:
    BlockView &timeline(const QStringList &items, const QString &color = {}) {
        return shown(fence(u"timeline"_s + color, items), width);
    }

    /// Where the second item's row begins.
    int secondTop() const {
        return int(view->caretAt(int(view->textBetween(0, 99).indexOf(u'\n')) + 1).top());
    }
};

} // namespace

TEST_F(TimelineListViewTest, aDotOfSevenStandsFiveBelowTheTopOfItsRow) {
    timeline({u"one"_s});
    const QImage drawn = picture();
    EXPECT_EQ(inkIn(drawn.copy(0, 0, pictureMargin + 9, drawn.height())), QRect(0, 5, 7, 7));
    EXPECT_EQ(colorAt(drawn, 3, 8), on(theme.primary));
}

TEST_F(TimelineListViewTest, theLineTouchesTheNextDot) {
    timeline({u"one"_s, u"two"_s});
    const QImage drawn = picture();
    const QRgb line = on(theme.shade(0.15));
    const int second = secondTop();
    for (int y = 12; y < second + 5; ++y)
        EXPECT_EQ(colorAt(drawn, 3, y), line) << y;
    EXPECT_EQ(countInRow(drawn, 15, line), 1);
    for (int y = second + 12; y < int(view->height()); ++y)
        EXPECT_EQ(colorAt(drawn, 3, y), bare()) << y;
}

TEST_F(TimelineListViewTest, itemsStandTenBesideTheRailWithTenBelow) {
    timeline({u"one"_s, u"two"_s});
    EXPECT_EQ(view->caretAt(0).left(), 17);
    EXPECT_EQ(secondTop(), int(view->caretAt(0).height()) + 10);
    EXPECT_EQ(view->height(), 2 * secondTop());
}

TEST_F(TimelineListViewTest, theColourIsThatOfTheDots) {
    timeline({u"one"_s}, u":teal"_s);
    EXPECT_EQ(colorAt(picture(), 3, 8), QColor::fromRgbF(0.09F, 0.53F, 0.56F).rgb());
}

TEST_F(TimelineListViewTest, aListFromTheRightHasItsRailThere) {
    timeline({u"שלום"_s, u"עולם"_s});
    const QImage drawn = picture();
    EXPECT_EQ(colorAt(drawn, width - 4, 8), on(theme.primary));
    EXPECT_EQ(colorAt(drawn, width - 4, 15), on(theme.shade(0.15)));
    EXPECT_LE(view->caretAt(0).right(), width - 16);
}

TEST_F(TimelineListViewTest, theItemsAreOneTextEach) {
    timeline({u"**one**"_s, u"[two](https://example.org)"_s});
    EXPECT_EQ(view->textBetween(0, view->length()), u"one\ntwo"_s);
    EXPECT_EQ(view->targets().size(), 1);
    const SpokenPart spoken = view->spoken();
    EXPECT_EQ(spoken.role, QAccessible::List);
    ASSERT_EQ(spoken.parts.size(), 2U);
    EXPECT_EQ(spoken.parts[1].name, u"two"_s);
    EXPECT_EQ(spoken.parts[1].parts.size(), 1U);
}

TEST_F(TimelineListViewTest, oneMoreItemChangesNothingAboveTheLastOne) {
    timeline({u"one"_s, u"two"_s});
    const double last = secondTop();
    EXPECT_EQ(change(fence(u"timeline"_s, {u"one"_s, u"two"_s, u"three"_s})), last);
}
