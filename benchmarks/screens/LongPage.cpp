#include "screens/LongPage.h"

#include "screens/Style.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

QString longPageText() {
    const QString once =
        u"# A page with everything\n\nSome **bold**, *italic*, `code` and a [link](https://example.org) in a "
        "paragraph that is long enough to be wrapped into a second line at this width.\n\n"
        "```subtitle\nA subtitle that explains\n```\n\n- one item\n- another with **bold**\n\n1. first\n"
        "2. second\n\n> A quote that somebody said\n> over two lines\n\n---\n\n```divider:green\n```\n\n"
        "```metric:green\nIncome: $4,200\nRent: $1,280\nLeft: $960\n```\n\n"
        "```chart:blue\nRent: 1280\nFood: 555\nTransport: 86\n```\n\n"
        "```line:red\nJan: 3\nFeb: 5\nMar: 4\nApr: 9\n```\n\n```donut\nA: 3\nB: 4\nC: 5\n```\n\n"
        "```progress:green\nDone: 80\nOpen: 33.5\n```\n\n"
        "```callout:yellow\nThe deposit rises too: set 240 aside before November.\n```\n\n"
        "```timeline\nFirst this\nThen that\nAt last this\n```\n\n```flow\nStart -> Middle -> End\n```\n\n"
        "```compare\nFast | Slow\na car | a walk\na plane | a ship\n```\n\n"
        "```cards\nTea | Green and black\nCoffee | Espresso\nWater | Still\n```\n\n"
        "```spec\nWeight | 12 kg\nColour | Red\n```\n\n```sources\n[Example](https://example.org)\nA "
        "book\n```\n\n"
        "| Name | Value |\n|---|---|\n| a | 1 |\n| b | 2 |\n\n"
        "```python\ndef f(x):\n    return x != 1  # -> never\n```\n\n"_s;
    return once.repeated(10);
}

PageCanvas longPage() {
    static const QString text = longPageText();
    return PageCanvas(u"A page with everything"_s, text, style::listExportWidth,
                      QDateTime::currentDateTime());
}

QByteArray toolkitPDF(const PageCanvas &page) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(72);
    writer.setPageSize(QPageSize(page.size(), QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins({});
    QPainter painter(&writer);
    page.draw(painter, QRectF({}, page.size()));
    painter.end();
    return bytes;
}

QByteArray toolkitPNG(const PageCanvas &page) {
    QImage image((page.size() * 2).toSize(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(2, 2);
    page.draw(painter, QRectF({}, page.size()));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}
