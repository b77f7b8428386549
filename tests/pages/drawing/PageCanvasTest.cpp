#include "pages/drawing/PageCanvas.h"

#include "pages/drawing/Drawn.h"

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

} // namespace

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
