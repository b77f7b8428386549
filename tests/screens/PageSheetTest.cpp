#include "screens/PageSheet.h"

#include "pages/drawing/MarkdownWidget.h"
#include "screens/PageView.h"
#include "screens/Screen.h"
#include "screens/Style.h"

#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

constexpr int paperWidth = 720;

PageDocument page(const QString &markdown) {
    const QDateTime date(QDate(2026, 11, 15), QTime(13, 18));
    return {QUuid::createUuid(), u"Tea"_s, markdown, date, date};
}

QString longText() {
    return u"A paragraph.\n\n"_s.repeated(200);
}

class PageSheetTest : public ::testing::Test {
protected:
    void show(const QString &markdown, const QSize &size) {
        sheet.setPage(page(markdown));
        sheet.resize(size);
        present(sheet);
    }

    QRect paper() const { return sheet.paper()->geometry(); }
    int groundHeight() const { return sheet.widget()->height(); }

    StillLook look;
    PageSheet sheet{look, paperWidth};
};

} // namespace

TEST_F(PageSheetTest, aNarrowSheetScalesThePaper) {
    show(longText(), {392, 500});
    EXPECT_DOUBLE_EQ(sheet.scale(), 0.5);
    EXPECT_EQ(paper().left(), 16);
    EXPECT_EQ(paper().width(), 360);
    EXPECT_NEAR(paper().height(), sheet.paper()->view().height() / 2, 1);
}

TEST_F(PageSheetTest, aWideSheetKeepsItsSizeAndCentresIt) {
    show(longText(), {1000, 500});
    EXPECT_DOUBLE_EQ(sheet.scale(), 1);
    EXPECT_EQ(paper().left(), 140);
    EXPECT_EQ(paper().width(), paperWidth);
}

TEST_F(PageSheetTest, noBandIsLeftAtTheFoot) {
    for (const int width : {100, 392, 752, 1000}) {
        show(longText(), {width, 300});
        EXPECT_EQ(paper().top(), 16);
        EXPECT_EQ(groundHeight(), paper().height() + 32);
        EXPECT_EQ(sheet.verticalScrollBar()->maximum(), groundHeight() - 300);
        EXPECT_EQ(sheet.horizontalScrollBar()->maximum(), 0);
    }
}

TEST_F(PageSheetTest, aSheetAsNarrowAsCanBeIsNotLost) {
    show(u"text"_s, {1, 1});
    sheet.resize(10, 10);
    EXPECT_DOUBLE_EQ(sheet.scale(), 1.0 / paperWidth);
    sheet.resize(400, 400);
    EXPECT_EQ(paper().width(), 368);
}

TEST_F(PageSheetTest, whetherItScrollsDoesNotChangeTheScale) {
    show(u"short"_s, {500, 500});
    const double scale = sheet.scale();
    sheet.setPage(page(longText()));
    EXPECT_DOUBLE_EQ(sheet.scale(), scale);
    EXPECT_EQ(paper().width(), 468);
}

TEST_F(PageSheetTest, thePaperIsThereFromTheFirstMoment) {
    sheet.resize(392, 500);
    sheet.setPage(page(longText()));
    EXPECT_GT(paper().height(), 500);
}

TEST_F(PageSheetTest, anotherPageBeginsAtItsHead) {
    show(longText(), {400, 300});
    sheet.verticalScrollBar()->setValue(500);
    sheet.setPage(page(longText() + u"more"_s));
    EXPECT_EQ(sheet.verticalScrollBar()->value(), 0);
}

TEST_F(PageSheetTest, thePaperIsWhiteInEveryTheme) {
    show(u"text"_s, {400, 300});
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        EXPECT_EQ(sheet.grab().toImage().pixel(20, 20), qRgb(255, 255, 255));
    }
}

TEST_F(PageSheetTest, aScreenReaderHearsTheWholePage) {
    show(u"## Green\n\nSome text."_s, {400, 300});
    EXPECT_EQ(spokenName(sheet.paper()), u"Tea, Nov 15, 2026\nGreen\nSome text."_s);
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(sheet.paper());
    ASSERT_EQ(reader->childCount(), 2);
    const QRect heading = reader->child(0)->rect();
    EXPECT_TRUE(QRect(sheet.paper()->mapToGlobal(QPoint()), sheet.paper()->size()).contains(heading));
}

TEST_F(PageSheetTest, linksArePressedWhereTheyAreSeen) {
    show(u"[a link](https://example.org)"_s, {392, 300});
    QSignalSpy activated(sheet.paper(), &MarkdownWidget::linkActivated);
    sheet.paper()->disconnect(&sheet);
    const QRectF area = sheet.paper()->view().targets().first().areas.first();
    const QPoint place = sheet.paper()->inWidget(area).center().toPoint();
    EXPECT_LT(place.y(), area.top());
    QTest::mouseClick(sheet.paper(), Qt::LeftButton, {}, place);
    ASSERT_EQ(activated.size(), 1);
    EXPECT_EQ(activated.first().first().toUrl(), QUrl(u"https://example.org"_s));
    QTest::mouseClick(sheet.paper(), Qt::LeftButton, {}, area.center().toPoint());
    EXPECT_EQ(activated.size(), 1);
}

TEST_F(PageSheetTest, textIsSelectedWhereItIsSeen) {
    show(u"first\n\nsecond"_s, {392, 300});
    MarkdownWidget *text = sheet.paper();
    const auto placeOf = [text](int position) {
        return text->inWidget(text->view().caretAt(position)).center().toPoint();
    };
    QTest::mousePress(text, Qt::LeftButton, {}, placeOf(0));
    QTest::mouseMove(text, placeOf(5));
    QTest::mouseRelease(text, Qt::LeftButton, {}, placeOf(5));
    EXPECT_EQ(text->selectedText(), u"first"_s);
}

TEST_F(PageSheetTest, keysGoToTheLinksAndScroll) {
    show(longText() + u"[a link](https://example.org)"_s, {392, 300});
    sheet.paper()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(sheet.paper(), Qt::Key_PageDown);
    EXPECT_GT(sheet.verticalScrollBar()->value(), 0);
    QTest::keyClick(sheet.paper(), Qt::Key_Tab);
    EXPECT_TRUE(sheet.paper()->focusedTarget());
    EXPECT_GT(sheet.verticalScrollBar()->value(), sheet.verticalScrollBar()->maximum() - 100);
}

TEST_F(PageSheetTest, anotherPageKeepsTheKeyboard) {
    show(u"one"_s, {392, 300});
    sheet.paper()->setFocus(Qt::TabFocusReason);
    sheet.setPage(page(u"two"_s));
    EXPECT_TRUE(sheet.paper()->hasFocus());
}
