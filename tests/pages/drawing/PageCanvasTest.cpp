#include "pages/drawing/PageCanvas.h"

#include "pages/drawing/Drawn.h"
#include "pages/drawing/Typefaces.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QDateTime date(QDate(2026, 11, 5), QTime(12, 0));

QImage pictured(const PageCanvas &canvas) {
    QImage image(canvas.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    canvas.draw(painter, QRectF({}, canvas.size()));
    return image;
}

int pixelsOf(const QImage &picture, const QColor &color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixel(x, y) == color.rgb();
    }
    return count;
}

/// The rows of a picture in which something stands, as their first and their last.
QList<std::pair<int, int>> inkedRows(const QImage &image) {
    QList<std::pair<int, int>> rows;
    for (int y = 0; y < image.height(); ++y) {
        bool isInked = false;
        for (int x = 0; x < image.width() && !isInked; ++x)
            isInked = image.pixel(x, y) != qRgb(255, 255, 255);
        if (!isInked)
            continue;
        if (!rows.isEmpty() && rows.last().second == y - 1)
            rows.last().second = y;
        else
            rows.append({y, y});
    }
    return rows;
}

/// Where that line of text has its ink if its head is at `top`.
QRect inkOf(const QString &line, const QFont &font, int top) {
    QImage picture(640, 300, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.drawText(32, top + QFontMetrics(font).ascent(), line);
    painter.end();
    return inkIn(picture).translated(pictureMargin, pictureMargin);
}

/// Where the ink of the rows from `top` to `bottom` is.
QRect inkBetween(const QImage &picture, int top, int bottom) {
    return inkIn(picture.copy(0, top, picture.width(), bottom - top))
        .translated(pictureMargin, pictureMargin + top);
}

void expectNear(const QRect &one, const QRect &other) {
    EXPECT_NEAR(one.left(), other.left(), 1);
    EXPECT_NEAR(one.top(), other.top(), 1);
    EXPECT_NEAR(one.right(), other.right(), 1);
    EXPECT_NEAR(one.bottom(), other.bottom(), 1);
}

} // namespace

TEST(PageCanvas, theTitleIsLargeAndHasSerifs) {
    QFont font(serifFamily());
    font.setPixelSize(30);
    font.setWeight(QFont::DemiBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QImage picture = pictured(PageCanvas(u"Green tea"_s, QString(), 640));
    const int bar = inkedRows(picture).last().first;
    EXPECT_EQ(bar, 32 + QFontMetrics(font).height() + 12);
    expectNear(inkBetween(picture, 0, bar), inkOf(u"Green tea"_s, font, 32));
}

TEST(PageCanvas, theDateStandsInSmallCapitalsAtTheFoot) {
    QFont font(monospacedFamily());
    font.setPixelSize(10);
    font.setWeight(QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1);
    font.setHintingPreference(QFont::PreferNoHinting);
    const PageCanvas canvas(u"Tea"_s, u"---"_s, 640, date);
    const QImage picture = pictured(canvas);
    const auto rows = inkedRows(picture);
    const int hairline = rows.at(rows.size() - 2).first;
    const int top = hairline + 1 + 10;
    EXPECT_EQ(picture.height(), top + std::ceil(QFontMetricsF(font).height()) + 32);
    expectNear(inkBetween(picture, hairline + 1, picture.height()), inkOf(u"NOV 5, 2026"_s, font, top));
    EXPECT_GT(pixelsOf(picture.copy(0, top, 640, 32), paperTheme().secondary), 0);
    EXPECT_EQ(picture.pixel(32, hairline), laidOn(Qt::white, paperTheme().shade(0.12)));
    EXPECT_EQ(picture.pixel(607, hairline), picture.pixel(32, hairline));
    EXPECT_EQ(picture.pixel(608, hairline), qRgb(255, 255, 255));
}

TEST(PageCanvas, itIsAsWideAsToldAndWhite) {
    const PageCanvas canvas(u"Tea"_s, u"text"_s, 640, date);
    EXPECT_EQ(canvas.size().width(), 640);
    const QImage picture = pictured(canvas);
    for (const int y : {0, 31, picture.height() - 1}) {
        for (const int x : {0, 31, 639})
            EXPECT_EQ(picture.pixel(x, y), qRgb(255, 255, 255));
    }
}

TEST(PageCanvas, theBarStandsBelowTheTitle) {
    const QImage picture = pictured(PageCanvas(u"Tea"_s, u""_s, 640));
    const auto [top, bottom] = inkedRows(picture).last();
    EXPECT_EQ(bottom - top + 1, 3);
    const QRgb bar = laidOn(Qt::white, paperTheme().shade(0.8));
    EXPECT_EQ(picture.pixel(32, top), bar);
    EXPECT_EQ(picture.pixel(71, top), bar);
    EXPECT_EQ(picture.pixel(72, top), qRgb(255, 255, 255));
}

TEST(PageCanvas, itsPartsStandApart) {
    // A bar at the head of the text, and a rule at its end, show where it begins and ends.
    const PageCanvas canvas(u"Tea"_s, u"```cards\na | b\n```\n---"_s, 640, date);
    const QList<std::pair<int, int>> rows = inkedRows(pictured(canvas));
    const auto titleBar = rows.at(1);
    EXPECT_EQ(rows.at(2).first - titleBar.second - 1, 18);
    const auto rule = rows.at(rows.size() - 3);
    const auto hairline = rows.at(rows.size() - 2);
    EXPECT_EQ(rule.first, rule.second);
    EXPECT_EQ(hairline.first, hairline.second);
    EXPECT_EQ(hairline.first - rule.second - 1, 10);
}

TEST(PageCanvas, withoutADateThereIsNoFoot) {
    const PageCanvas with(u"Tea"_s, u"text"_s, 640, date);
    const PageCanvas without(u"Tea"_s, u"text"_s, 640);
    EXPECT_GT(with.height(), without.height() + 20);
    EXPECT_EQ(inkedRows(pictured(with)).size(), inkedRows(pictured(without)).size() + 2);
}

TEST(PageCanvas, aLongTitleGoesOverSeveralLines) {
    const PageCanvas one(u"Tea"_s, u"text"_s, 640);
    const PageCanvas two(u"Tea and coffee and everything else that one can drink hot"_s, u"text"_s, 640);
    EXPECT_GT(two.height(), one.height() + 30);
    EXPECT_EQ(two.size().width(), 640);
}

TEST(PageCanvas, aTitleIsNoMarkdown) {
    const PageCanvas canvas(u"*Tea* [x](https://example.org)"_s, u"text"_s, 640);
    EXPECT_EQ(canvas.title(), u"*Tea* [x](https://example.org)"_s);
    EXPECT_TRUE(canvas.targets().isEmpty());
}

TEST(PageCanvas, aPartOfItIsDrawnAsInTheWhole) {
    const PageCanvas canvas(u"Tea"_s, u"text\n\n"_s.repeated(20), 640, date);
    const QImage whole = pictured(canvas);
    QImage part(640, 100, QImage::Format_RGB32);
    for (const int top : {0, 40, 90, 300, whole.height() - 100}) {
        QPainter painter(&part);
        painter.translate(0, -top);
        canvas.draw(painter, QRectF(0, top, 640, 100));
        painter.end();
        EXPECT_EQ(part, whole.copy(0, top, 640, 100)) << top;
    }
}

TEST(PageCanvas, anEmptyPageHasTitleAndDate) {
    const PageCanvas canvas(QString(), QString(), 640, date);
    EXPECT_GT(canvas.height(), 100);
    EXPECT_EQ(canvas.blockCount(), 0U);
}
