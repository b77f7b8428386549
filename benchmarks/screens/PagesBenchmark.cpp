#include "figures/Measure.h"
#include "pages/PageStore.h"
#include "pages/drawing/PageCanvas.h"
#include "pages/paper/PageExport.h"
#include "support/TemporaryApplicationFolder.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <benchmark/benchmark.h>

// Saved pages: their list, and a long page as a file, each from its text on. The peers of the files are the
// toolkit's own writers.

using namespace Qt::StringLiterals;

namespace {

constexpr int pagesInStore = 1000;
constexpr int exportWidth = 640;

/// A page with every kind of block ten times.
QString longText() {
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
    static const QString text = longText();
    return PageCanvas(u"A page with everything"_s, text, exportWidth, QDateTime::currentDateTime());
}

void pageToPDF(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(exportPagePDF(longPage()));
}
BENCHMARK(pageToPDF)->Unit(benchmark::kMillisecond);

void pageToToolkitPDF(benchmark::State &state) {
    for (auto round : state) {
        const PageCanvas canvas = longPage();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setResolution(72);
        writer.setPageSize(QPageSize(canvas.size(), QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setPageMargins({});
        QPainter painter(&writer);
        canvas.draw(painter, QRectF({}, canvas.size()));
    }
}
BENCHMARK(pageToToolkitPDF)->Unit(benchmark::kMillisecond);

void pageToPNG(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(exportPagePNG(longPage()));
}
BENCHMARK(pageToPNG)->Unit(benchmark::kMillisecond);

/// Leaves out what is beyond the reach of a painter on an image.
void pageToToolkitPNG(benchmark::State &state) {
    for (auto round : state) {
        const PageCanvas canvas = longPage();
        QImage image((canvas.size() * 2).toSize(), QImage::Format_RGB32);
        QPainter painter(&image);
        painter.scale(2, 2);
        canvas.draw(painter, QRectF({}, canvas.size()));
        painter.end();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "png");
    }
}
BENCHMARK(pageToToolkitPNG)->Unit(benchmark::kMillisecond);

void listOfSavedPages(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QString text = longText().left(4000);
    for (int index = 0; index < pagesInStore; ++index)
        savePage({QUuid::createUuid(), u"Page %1"_s.arg(index), text, now, now.addSecs(index * 7919 % 1000)});
    for (auto round : state)
        benchmark::DoNotOptimize(listPages());
}
BENCHMARK(listOfSavedPages)->Unit(benchmark::kMillisecond)->UseRealTime();

const Declared pdf{{.name = "page with every block ten times as PDF (peer: the toolkit's)",
                    .function = "pageToPDF",
                    .peer = "pageToToolkitPDF",
                    .budget = {.most = 500}}};
const Declared png{{.name = "page with every block ten times as PNG (peer: the toolkit's)",
                    .function = "pageToPNG",
                    .peer = "pageToToolkitPNG",
                    .budget = {.most = 500}}};
const Declared list{
    {.name = "list of 1,000 saved pages", .function = "listOfSavedPages", .budget = {.most = 150}}};

} // namespace
