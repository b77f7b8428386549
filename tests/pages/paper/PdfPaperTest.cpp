#include "pages/paper/PdfPaper.h"

#include "pages/paper/PdfFile.h"
#include "pages/paper/PdfReader.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <functional>
#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Painting = std::function<void(QPainter &)>;

constexpr QSize size(200, 100);

QByteArray printed(const Painting &paint, const QSizeF &paperSize = size) {
    PdfPaper paper(u"Test"_s, paperSize);
    QPainter painter(&paper);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    painter.end();
    return paper.written();
}

QImage shown(const Painting &paint) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return image;
}

void expectLikeOnTheScreen(const Painting &paint) {
    const QImage onScreen = shown(paint);
    EXPECT_NE(onScreen, shown([](QPainter &) {}));
    expectAlike(PdfReader(printed(paint)).picture(), onScreen);
}

} // namespace

TEST(PdfPaper, filledShapesAreLikeOnTheScreen) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.fillRect(10, 10, 50, 30, QColor(200, 30, 60));
        painter.fillRect(QRectF(30, 20, 60, 40), QColor(0, 90, 200, 100));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(20, 140, 60));
        painter.drawEllipse(QRectF(110, 10, 50, 30));
        painter.drawRoundedRect(QRectF(110, 50, 70, 40), 8, 8);
        const QPointF star[] = {{30, 95}, {50, 60}, {70, 95}, {25, 73}, {75, 73}};
        painter.drawPolygon(star, 5, Qt::OddEvenFill);
    });
}

TEST(PdfPaper, strokedLinesAreLikeOnTheScreen) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.setPen(QPen(QColor(30, 60, 200), 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF points[] = {{10, 80}, {40, 20}, {70, 80}};
        painter.drawPolyline(points, 3);
        painter.setPen(QPen(QColor(0, 0, 0, 90), 14, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(QRectF(100, 20, 60, 60), 30 * 16, 200 * 16);
        painter.setPen(QPen(Qt::red, 4, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(170, 30, 20, 40);
    });
}

TEST(PdfPaper, whatIsMovedTurnedAndScaledIsLikeOnTheScreen) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.translate(100, 50);
        painter.rotate(20);
        painter.scale(2, 1.5);
        painter.fillRect(-20, -10, 40, 20, QColor(90, 60, 160));
        painter.setPen(QPen(Qt::black, 2));
        painter.drawLine(-40, -15, 40, -15);
    });
}

TEST(PdfPaper, clippingKeepsWhatIsInsideUntilItEnds) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.save();
        painter.translate(20, 0);
        painter.setClipRect(QRectF(10, 10, 60, 60), Qt::IntersectClip);
        painter.fillRect(0, 0, 200, 40, Qt::darkGreen);
        painter.translate(-20, 0);
        painter.setClipRect(QRectF(0, 0, 60.5, 200), Qt::IntersectClip);
        painter.fillRect(0, 30, 200, 70, Qt::darkBlue);
        painter.restore();
        painter.fillRect(150, 10, 30, 80, Qt::darkRed);
    });
}

TEST(PdfPaper, insideAnEmptyClipNothingIsDrawn) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.save();
        painter.setClipRect(QRectF(10, 10, 40, 40));
        painter.setClipRect(QRectF(60, 60, 40, 40), Qt::IntersectClip);
        painter.fillRect(0, 0, 200, 100, Qt::darkGreen);
        painter.setClipPath(QPainterPath());
        painter.fillRect(0, 0, 200, 100, Qt::darkBlue);
        painter.restore();
        painter.fillRect(150, 10, 30, 80, Qt::darkRed);
    });
}

TEST(PdfPaper, opacityOfThePainterCounts) {
    expectLikeOnTheScreen([](QPainter &painter) {
        painter.setOpacity(0.5);
        painter.fillRect(10, 10, 80, 80, Qt::black);
        painter.fillRect(50, 10, 100, 80, QColor(255, 0, 0, 128));
    });
}

TEST(PdfPaper, aPictureIsLikeOnTheScreen) {
    QImage picture(4, 2, QImage::Format_ARGB32);
    picture.fill(QColor(200, 0, 0, 128));
    picture.setPixelColor(0, 0, Qt::blue);
    picture.setPixelColor(3, 1, Qt::transparent);
    const QPixmap pixmap = QPixmap::fromImage(picture);
    expectLikeOnTheScreen([&](QPainter &painter) {
        painter.drawPixmap(QRectF(20, 20, 80, 40), pixmap, QRectF(0, 0, 4, 2));
        painter.drawPixmap(QRectF(120, 20, 60, 60), pixmap, QRectF(1, 0, 2, 2));
    });
}

TEST(PdfPaper, lettersStandWhereTheyStandOnTheScreen) {
    expectLikeOnTheScreen([](QPainter &painter) {
        QFont font(u"Inter"_s);
        font.setPixelSize(40);
        font.setWeight(QFont::Black);
        font.setHintingPreference(QFont::PreferNoHinting);
        painter.setFont(font);
        painter.setPen(QColor(120, 0, 90));
        painter.drawText(QPointF(10, 45), u"Hij, ẍ"_s);
        painter.scale(0.5, 1);
        painter.drawText(QPointF(20, 90), u"Wide"_s);
    });
}

TEST(PdfPaper, theFileIsWholeAndAlwaysTheSame) {
    const Painting paint = [](QPainter &painter) {
        painter.fillRect(0, 0, 10, 10, QColor(1, 2, 3, 4));
        painter.fillRect(0, 0, 10, 10, QColor(1, 2, 3, 200));
        painter.drawText(10, 50, u"Text"_s);
    };
    const QByteArray file = printed(paint);
    EXPECT_EQ(printed(paint), file);
    EXPECT_TRUE(file.startsWith("%PDF-1.7\n"));
    EXPECT_TRUE(file.endsWith("%%EOF\n"));
    // Where the table says that an object stands, it stands.
    const qsizetype table = file.lastIndexOf("xref\n", file.lastIndexOf("startxref") - 1);
    const QList<QByteArray> lines = file.sliced(table).split('\n');
    const int count = lines.at(1).sliced(2).toInt();
    ASSERT_GT(count, 8);
    for (int object = 1; object < count; ++object) {
        const qsizetype place = lines.at(2 + object).first(10).toLongLong();
        EXPECT_EQ(file.sliced(place, 8).split(' ').first().toInt(), object);
    }
    EXPECT_EQ(file.sliced(file.lastIndexOf("startxref") + 10).split('\n').first().toLongLong(), table);
}

TEST(PdfPaper, anEmptyPageIsAPage) {
    const PdfReader reader(printed([](QPainter &) {}, QSizeF(10.5, 20.25)));
    EXPECT_EQ(reader.fact(u"Pages"_s), u"1"_s);
    EXPECT_EQ(reader.fact(u"Page size"_s), u"10.5 x 20.25 pts"_s);
    EXPECT_EQ(reader.words(), QString());
}

TEST(PdfPaper, numbersAreWrittenShortly) {
    EXPECT_EQ(pdf::number(3), "3");
    EXPECT_EQ(pdf::number(-2.5), "-2.5");
    EXPECT_EQ(pdf::number(0.0004), "0");
    EXPECT_EQ(pdf::number(-0.0004), "0");
    EXPECT_EQ(pdf::number(100000.125), "100000.125");
    EXPECT_EQ(pdf::number(1e300), "1000000000");
    EXPECT_EQ(pdf::number(-std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(pdf::number(std::numeric_limits<double>::quiet_NaN()), "0");
}
