#include "pages/paper/PageExport.h"

#include "pages/drawing/PageCanvas.h"
#include "pages/paper/PdfReader.h"

#include <QImageReader>
#include <QPainter>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QDateTime date(QDate(2026, 11, 5), QTime(12, 0));

/// Each kind of block, and what it says in the order of reading where its texts stand below each other.
const QString everything =
    u"# Heading\n\nA **strong** word and `code`.\n\n```subtitle\nSub\n```\n\n- one\n- two\n\n"
    "1. first\n2. second\n\n> quoted\n\n---\n\n```divider:green\n```\n\n"
    "```metric:green\nIncome: $4,200\n```\n\n```chart\nRent: 1280\n```\n\n"
    "```line\nJan: 3\nFeb: 5\n```\n\n```donut\nShare: 3\n```\n\n```progress\nDone: 80\n```\n\n"
    "```callout\nMind this\n```\n\n```timeline\nBefore\nAfter\n```\n\n```flow\nStart -> End\n```\n\n"
    "```compare\nFast | Slow\na car | a walk\n```\n\n```cards\nTea | Green\n```\n\n"
    "```spec\nWeight | 12 kg\n```\n\n```sources\n[Example](https://example.org/s)\n```\n\n"
    "| Name | Value |\n|---|---|\n| a1 | b1 |\n\n```python\nx != 1  # -> never\n```\n"_s;

QString paragraphs(int count) {
    return u"A paragraph of a long page.\n\n"_s.repeated(count);
}

} // namespace

TEST(PageExport, aPdfIsOnePageOfThePagesSize) {
    const PageCanvas canvas(u"Title"_s, everything, 640, date);
    const PdfReader reader(exportPagePDF(canvas));
    EXPECT_EQ(reader.fact(u"Pages"_s), u"1"_s);
    EXPECT_EQ(reader.fact(u"Page size"_s), u"640 x %1 pts"_s.arg(canvas.height()));
    EXPECT_EQ(reader.fact(u"Title"_s), u"Title"_s);
}

TEST(PageExport, aPdfSaysWhatThePageSays) {
    const PageCanvas canvas(u"Überschrift – 标题"_s, everything, 640, date);
    const PdfReader reader(exportPagePDF(canvas));
    EXPECT_EQ(reader.fact(u"Title"_s), u"Überschrift – 标题"_s);
    const QString text = reader.words();
    for (const QString &said : {u"Überschrift – 标题 Heading A strong word and code. Sub"_s,
                                u"• one • two 1. first 2. second quoted"_s,
                                u"INCOME $4,200"_s,
                                u"Rent 1280"_s,
                                u"Jan Feb"_s,
                                u"Share 100%"_s,
                                u"Done 80%"_s,
                                u"NOTE Mind this"_s,
                                u"Before After"_s,
                                u"Start End"_s,
                                u"Fast"_s,
                                u"Slow"_s,
                                u"— a car"_s,
                                u"— a walk"_s,
                                u"Tea Green"_s,
                                u"WEIGHT"_s,
                                u"12 kg"_s,
                                u"[1] Example"_s,
                                u"NAME VALUE a1 b1"_s,
                                u"PYTHON"_s,
                                u"x != 1 # -> never"_s,
                                u"NOV 5, 2026"_s})
        EXPECT_TRUE(text.contains(said)) << said.toStdString() << " isn't in " << text.toStdString();
    EXPECT_FALSE(text.contains(u"Copy"_s)) << "nobody can press a button of a file";
}

TEST(PageExport, allFontsOfAPdfAreInIt) {
    const QStringList fonts = PdfReader(exportPagePDF(PageCanvas(u"T"_s, everything, 640, date))).fonts();
    EXPECT_GT(fonts.size(), 4);
    static const QRegularExpression embeddedPartWithTexts(u" yes yes yes +\\d+ +0$"_s);
    for (const QString &font : fonts)
        EXPECT_TRUE(font.contains(embeddedPartWithTexts)) << font.toStdString();
}

TEST(PageExport, linksOfAPdfLeadWhereTheyLead) {
    const QString text = u"[one](https://example.org/a?b=c&d=(e)) and [two](<mailto:a@example.org>)\n\n"
                         "[no](file:///etc/passwd) [ü](https://example.org/ü)"_s;
    const PageCanvas canvas(u"T"_s, text, 640);
    const QByteArray pdf = exportPagePDF(canvas);
    EXPECT_EQ(PdfReader(pdf).addresses(),
              (QStringList{u"https://example.org/a?b=c&d=(e)"_s, u"mailto:a@example.org"_s,
                           u"https://example.org/%C3%BC"_s}));
    const QRectF area = canvas.targets().first().areas.first();
    const QByteArray place = "/Rect[" + QByteArray::number(area.left()) + ' ' +
                             QByteArray::number(canvas.height() - area.bottom());
    EXPECT_TRUE(pdf.contains(place)) << place.toStdString();
}

TEST(PageExport, aLinkOverTwoLinesIsPressedInBoth) {
    const QString text = u"["_s + u"word "_s.repeated(40) + u"](https://example.org)"_s;
    const PageCanvas canvas(u"T"_s, text, 640);
    EXPECT_EQ(PdfReader(exportPagePDF(canvas)).addresses().size(), canvas.targets().first().areas.size());
    EXPECT_GT(canvas.targets().first().areas.size(), 1);
}

TEST(PageExport, aLongPageIsOneTallPage) {
    const PageCanvas canvas(u"Long"_s, paragraphs(2000), 640, date);
    ASSERT_GT(canvas.height(), 40'000);
    const PdfReader reader(exportPagePDF(canvas));
    EXPECT_EQ(reader.fact(u"Pages"_s), u"1"_s);
    EXPECT_EQ(reader.fact(u"Page size"_s), u"640 x %1 pts"_s.arg(canvas.height()));
    EXPECT_EQ(reader.text().count(u"A paragraph of a long page."_s), 2000);
    EXPECT_TRUE(reader.words().endsWith(u"NOV 5, 2026"_s));
}

TEST(PageExport, aPdfLooksLikeThePage) {
    const PageCanvas canvas(u"Title"_s, everything, 640, date);
    const QImage onPaper = PdfReader(exportPagePDF(canvas)).picture();
    QImage onScreen(canvas.size().toSize(), QImage::Format_RGB32);
    QPainter painter(&onScreen);
    canvas.draw(painter, QRectF({}, canvas.size()));
    painter.end();
    expectAlike(onPaper, onScreen);
}

TEST(PageExport, noTextMakesAFileThatCannotBeRead) {
    const QStringList texts{
        QString(),
        u"```line\nA: 1e308\nB: -1e308\nC: nan\n```\n```chart\nA: -1e300\n```\n```donut\nA: inf\n```"_s,
        u"a"_s + QChar(0xD800) + u"b\n\n"_s + QChar(0) + u"c \u0007 \uFFFF \uFFFE"_s,
        u"e"_s + QString(300, QChar(0x301)),
        u"\u202Eabc \u2066 אבג \u202C 12"_s,
        u"```"_s + QString(5000, u'x') + u"\n"_s + QString(5000, u'\t'),
        u"[a](https://example.org/)>>endobj(\\)"_s};
    for (const QString &text : texts) {
        const PageCanvas canvas(text.left(60), text, 640, date);
        const PdfReader reader(exportPagePDF(canvas));
        EXPECT_EQ(reader.fact(u"Pages"_s), u"1"_s) << text.left(60).toStdString();
        EXPECT_TRUE(reader.words().contains(u"NOV 5, 2026"_s)) << text.left(60).toStdString();
        EXPECT_FALSE(exportPagePNG(canvas).isEmpty());
    }
}

TEST(PageExport, aPngHasTwoPixelsToEachPoint) {
    const PageCanvas canvas(u"Title"_s, everything, 680, date);
    const QImage image = QImage::fromData(exportPagePNG(canvas), "png");
    EXPECT_EQ(image.size(), QSize(1360, int(canvas.height()) * 2));
    EXPECT_EQ(image.dotsPerMeterX(), 5669);
}

TEST(PageExport, aPngShowsThePage) {
    const PageCanvas canvas(u"Title"_s, u"text"_s, 640, date);
    const QImage image = QImage::fromData(exportPagePNG(canvas), "png").convertToFormat(QImage::Format_RGB32);
    for (const QPoint &corner : {QPoint(0, 0), QPoint(1279, 0), QPoint(0, image.height() - 1)})
        EXPECT_EQ(image.pixel(corner), qRgb(255, 255, 255));
    QImage large(image.size(), QImage::Format_RGB32);
    QPainter painter(&large);
    painter.scale(2, 2);
    canvas.draw(painter, QRectF({}, canvas.size()));
    painter.end();
    EXPECT_EQ(image, large);
}

TEST(PageExport, theBandsOfALongPngMeet) {
    // Higher than a painter reaches.
    const PageCanvas canvas(u"Long"_s, paragraphs(200) + u"```timeline\n"_s + u"Step\n"_s.repeated(500), 640,
                            date);
    ASSERT_GT(canvas.height() * 2, 40'000);
    QImageReader::setAllocationLimit(0);
    const QImage image = QImage::fromData(exportPagePNG(canvas), "png").convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(image.height(), int(canvas.height()) * 2);
    for (const int top : {500, 1000, 32'500, image.height() - 700}) {
        QImage expected(1280, 600, QImage::Format_RGB32);
        QPainter painter(&expected);
        painter.scale(2, 2);
        painter.translate(0, -top / 2.0);
        canvas.draw(painter, QRectF(0, top / 2.0, 640, 300));
        painter.end();
        EXPECT_EQ(image.copy(0, top, 1280, 600), expected) << top;
    }
}
