#include "pages/drawing/ColumnWidths.h"
#include "pages/drawing/Drawn.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double gap = 18;

class TableViewTest : public testing::Test {
protected:
    BlockView &shown(const QString &text, double width = 400) {
        view = viewOf(text, theme, width);
        return *view;
    }

    /// The places of the lines, from top to bottom, as they go on between the first two columns.
    QList<int> lines() const {
        const QImage picture = pictureOf(*view);
        const int beside = int(view->spoken().parts[0].parts[0].area.right() + gap / 2);
        QList<int> places;
        for (int y = 0; y < int(view->height()); ++y) {
            if (colorAt(picture, beside, y) != QColor(Qt::white).rgb())
                places.append(y);
        }
        return places;
    }

    const DrawingTheme theme = paperTheme();
    std::unique_ptr<BlockView> view;
};

} // namespace

TEST(ColumnWidths, whatIsToSpareStaysFree) {
    const auto bands = columnBands({32, 82}, 500, gap, 72);
    ASSERT_EQ(bands.size(), 1);
    EXPECT_EQ(bands[0].widths, (QList<double>{32, 82}));
    EXPECT_EQ(bands[0].width(gap), 32 + gap + 82);
}

TEST(ColumnWidths, whatIsMissingIsTakenFromTheWidest) {
    const auto bands = columnBands({40, 500, 300, 100}, 600 + 3 * gap, gap, 72);
    ASSERT_EQ(bands.size(), 1);
    EXPECT_EQ(bands[0].widths, (QList<double>{40, 230, 230, 100}));
}

TEST(ColumnWidths, columnsWithoutRoomGoOnBelow) {
    const QList<double> wanted(10, 200);
    const auto bands = columnBands(wanted, 3 * 72 + 2 * gap, gap, 72);
    ASSERT_EQ(bands.size(), 4);
    qsizetype next = 0;
    for (const ColumnBand &band : bands) {
        EXPECT_EQ(band.first, next);
        EXPECT_LE(band.width(gap), 3 * 72 + 2 * gap);
        next += band.widths.size();
    }
    EXPECT_EQ(next, 10);
}

TEST(ColumnWidths, thereIsAlwaysAColumnInABand) {
    EXPECT_EQ(columnBands({100, 100}, 1, gap, 72).size(), 2);
    EXPECT_TRUE(columnBands({}, 100, gap, 72).isEmpty());
}

TEST_F(TableViewTest, aLineStandsUnderTheHeaderAndUnderEachRow) {
    shown(u"| A | B |\n|---|---|\n| 1 | 2 |\n| 3 |"_s);
    const QList<int> places = lines();
    ASSERT_EQ(places.size(), 3);
    EXPECT_EQ(places.last(), int(view->height()) - 1);
    EXPECT_EQ(places[2] - places[1], places[1] - places[0]);
    const QImage picture = pictureOf(*view);
    EXPECT_EQ(colorAt(picture, 0, places[0]), laidOn(Qt::white, theme.shade(0.18)));
    EXPECT_EQ(colorAt(picture, 0, places[1]), laidOn(Qt::white, theme.shade(0.08)));
}

TEST_F(TableViewTest, cellsAreInLineWithTheirHeader) {
    const SpokenPart table = shown(u"| A | B |\n| one | two |\n| x | y | z |"_s).spoken();
    ASSERT_EQ(table.parts.size(), 3U);
    EXPECT_EQ(table.parts[0].parts[1].role, QAccessible::ColumnHeader);
    EXPECT_EQ(table.parts[0].parts[1].name, u"B"_s);
    EXPECT_EQ(table.parts[1].parts[1].name, u"two"_s);
    EXPECT_EQ(table.parts[2].parts.size(), 3U);
    for (const size_t column : {0U, 1U}) {
        const QRectF header = table.parts[0].parts[column].area;
        EXPECT_EQ(table.parts[1].parts[column].area.left(), header.left());
        EXPECT_EQ(table.parts[2].parts[column].area.left(), header.left());
    }
    EXPECT_GT(table.parts[2].parts[2].area.left(), table.parts[2].parts[1].area.right() + gap - 1);
}

TEST_F(TableViewTest, columnsAreAsWideAsTheirWidestCellAndEighteenApart) {
    const SpokenPart table = shown(u"| A | B | C |\n| wide cell | b | c |"_s).spoken();
    const auto &headers = table.parts[0].parts;
    TextPart widest(theme, {.step = TextStep::callout});
    widest.setText(u"wide cell");
    widest.layIn(400);
    EXPECT_EQ(headers[0].area.width(), widest.usedWidth());
    EXPECT_EQ(headers[1].area.left(), headers[0].area.right() + 18);
    EXPECT_EQ(headers[2].area.left(), headers[1].area.right() + 18);
    const int line = lines().first();
    const int end = int(headers[2].area.right());
    EXPECT_NE(colorAt(pictureOf(*view), end - 1, line), QColor(Qt::white).rgb());
    EXPECT_EQ(colorAt(pictureOf(*view), end, line), QColor(Qt::white).rgb());
}

TEST_F(TableViewTest, longCellsWrapAndNothingLiesOverAnything) {
    const QString cell = u"many words in a cell "_s.repeated(8);
    const SpokenPart table = shown(u"| A | B | C |\n| %1 | b | %1 |"_s.arg(cell)).spoken();
    const auto &cells = table.parts[1].parts;
    EXPECT_GT(cells[0].area.height(), 2 * cells[1].area.height());
    EXPECT_LE(cells[0].area.right() + gap, cells[1].area.left() + 0.001);
    EXPECT_LE(cells[2].area.right(), 400.001);
    EXPECT_LE(inkIn(pictureOf(*view)).right(), 400);
}

TEST_F(TableViewTest, aVeryWideTableGoesOnBelow) {
    QString row;
    for (int column = 0; column < 500; ++column)
        row += u"| column %1 "_s.arg(column);
    const SpokenPart table = shown(row + u'\n' + row).spoken();
    const auto &headers = table.parts[0].parts;
    ASSERT_EQ(headers.size(), 500U);
    for (size_t column = 1; column < headers.size(); ++column) {
        const bool isBeside = headers[column].area.left() >= headers[column - 1].area.right();
        const bool isBelow = headers[column].area.top() > table.parts[1].parts[column - 1].area.bottom();
        ASSERT_TRUE(isBeside || isBelow);
        ASSERT_LE(headers[column].area.right(), 400.001);
    }
    EXPECT_LE(headers.back().area.bottom(), view->height());
}

TEST_F(TableViewTest, aNewRowChangesOnlyWhatIsBelowTheOthers) {
    shown(u"| Name | B |\n| one | 2 |"_s);
    const double end = view->height();
    EXPECT_EQ(view->setBlock(blockOf(u"| Name | B |\n| one | 2 |\n| two | 3 |"_s).content), end);
    EXPECT_EQ(view->setBlock(blockOf(u"| Name | B |\n| one | 2 |\n| two | 4 |"_s).content), end);
    EXPECT_EQ(view->setBlock(blockOf(u"| Name | B |\n| one | 2 |\n| the longest | 4 |"_s).content), 0);
    const auto fresh = viewOf(u"| Name | B |\n| one | 2 |\n| the longest | 4 |"_s, theme, 400);
    EXPECT_EQ(pictureOf(*view), pictureOf(*fresh));
}

TEST_F(TableViewTest, anyChangeGivesWhatANewViewGives) {
    const QStringList texts{u"| a | b |\n| c | d |"_s, u"| a |"_s, u"| a | | x |\n| | |\n| q | **w** |"_s,
                            u"|"_s, u"| a | b |\n| c | long cell %1 |"_s.arg(u"and more "_s.repeated(20))};
    shown(u"|"_s);
    for (const QString &text : texts + texts) {
        view->setBlock(blockOf(text).content);
        const auto fresh = viewOf(text, theme, 400);
        EXPECT_EQ(view->height(), fresh->height()) << text.toStdString();
        EXPECT_EQ(pictureOf(*view), pictureOf(*fresh)) << text.toStdString();
    }
}

TEST_F(TableViewTest, nothingButStrokesIsALine) {
    EXPECT_LT(shown(u"|"_s).height(), 40);
    EXPECT_EQ(shown(QString(1'000'000, u'|')).height(), shown(u"|"_s).height());
}

TEST_F(TableViewTest, aLinkInACellCanBePressed) {
    const QList<Target> targets = shown(u"| A |\n| [b](https://example.org) |"_s).targets();
    ASSERT_EQ(targets.size(), 1);
    EXPECT_TRUE(view->targetAt(targets[0].areas[0].center()).has_value());
}
