#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 312;
constexpr int columnWidth = 150;
constexpr int rightColumn = columnWidth + 12;

class CompareViewTest : public Figure {
protected:
    BlockView &compare(const QStringList &rows, const QString &color = {}) {
        return shown(fence(u"compare"_s + color, rows), width);
    }

    std::vector<QString> itemsOf(int column) const {
        std::vector<QString> names;
        const SpokenPart spoken = view->spoken();
        for (const SpokenPart &item : spoken.parts.at(size_t(column)).parts)
            names.push_back(item.name);
        return names;
    }
};

} // namespace

TEST_F(CompareViewTest, withoutRowsThereAreTwoEmptyColumns) {
    compare({});
    const QRgb bar = on(theme.shade(0.6));
    EXPECT_EQ(inkIn(picture()), QRect(0, 0, width, 2));
    EXPECT_EQ(countInRow(picture(), 0, bar), 2 * columnWidth);
}

TEST_F(CompareViewTest, eachColumnHasABarTwoHigh) {
    compare({u"a | b"_s}, u":red"_s);
    const QImage drawn = picture();
    const QRgb bar = on(faded(QColor::fromRgbF(0.78F, 0.22F, 0.22F), 0.6));
    for (const int y : {0, 1})
        EXPECT_EQ(countInRow(drawn, y, bar), 2 * columnWidth);
    EXPECT_EQ(countInRow(drawn, 2, bare()), drawn.width());
    EXPECT_EQ(colorAt(drawn, columnWidth - 1, 0), bar);
    EXPECT_EQ(colorAt(drawn, columnWidth, 0), bare());
    EXPECT_EQ(colorAt(drawn, rightColumn, 0), bar);
}

TEST_F(CompareViewTest, theFirstRowHasTheTitlesAndEmptyItemsFallOut) {
    compare({u"Stay | Move"_s, u"garden | city"_s, u"cheap"_s, u"calm | loud"_s});
    const SpokenPart spoken = view->spoken();
    EXPECT_EQ(spoken.parts[0].name, u"Stay"_s);
    EXPECT_EQ(spoken.parts[1].name, u"Move"_s);
    EXPECT_EQ(itemsOf(0), (std::vector<QString>{u"garden"_s, u"cheap"_s, u"calm"_s}));
    EXPECT_EQ(itemsOf(1), (std::vector<QString>{u"city"_s, u"loud"_s}));
}

TEST_F(CompareViewTest, oneRowIsTitlesOnly) {
    compare({u"Fast || Slow"_s});
    EXPECT_EQ(view->spoken().parts[1].name, u"| Slow"_s);
    EXPECT_TRUE(itemsOf(0).empty());
    EXPECT_TRUE(itemsOf(1).empty());
}

TEST_F(CompareViewTest, itemsStandTenApartEachBehindADash) {
    const double titles = compare({u"a | b"_s}).height();
    const double lineHeight = titles - 12;
    compare({u"a | b"_s, u"c | d"_s});
    EXPECT_EQ(view->height(), titles + 10 + lineHeight);
    const QImage item = picture().copy(0, pictureMargin + int(titles) + 10, width, int(lineHeight));
    const double dash = std::ceil(QFontMetricsF(theme.font(TextStep::body)).horizontalAdvance(u'—'));
    EXPECT_LE(inkIn(item).left(), 2);
    for (int x = int(dash) + 1; x < int(dash) + 8; ++x)
        EXPECT_EQ(countInColumn(item, x, bare()), item.height()) << x;
}

TEST_F(CompareViewTest, anItemFromTheRightHasItsDashThere) {
    compare({u"a | b"_s, u"שלום | x"_s});
    const QImage left = picture().copy(0, int(view->height()) - 10, pictureMargin + columnWidth + 5, 30);
    EXPECT_GT(inkIn(left).left(), columnWidth / 2);
    EXPECT_GE(inkIn(left).right(), columnWidth - 4);
}

TEST_F(CompareViewTest, oneMoreRowChangesNothingAbove) {
    const double height = compare({u"a | b"_s, u"c | d"_s}).height();
    EXPECT_EQ(change(fence(u"compare"_s, {u"a | b"_s, u"c | d"_s, u"e | f"_s})), height);
}
