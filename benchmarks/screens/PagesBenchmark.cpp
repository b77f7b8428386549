#include "figures/Measure.h"
#include "pages/PageStore.h"
#include "pages/paper/PageExport.h"
#include "screens/LongPage.h"
#include "support/TemporaryApplicationFolder.h"

#include <benchmark/benchmark.h>

// Saved pages: their list, and a long page as a file, from its text on, in a process that has made such files
// before.

using namespace Qt::StringLiterals;

namespace {

constexpr int pagesInStore = 1000;

void pageToPDF(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(exportPagePDF(longPage()));
}
BENCHMARK(pageToPDF)->Unit(benchmark::kMillisecond);

void pageToToolkitPDF(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(toolkitPDF(longPage()));
}
BENCHMARK(pageToToolkitPDF)->Unit(benchmark::kMillisecond);

void pageToPNG(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(exportPagePNG(longPage()));
}
BENCHMARK(pageToPNG)->Unit(benchmark::kMillisecond);

void pageToToolkitPNG(benchmark::State &state) {
    for (auto round : state)
        benchmark::DoNotOptimize(toolkitPNG(longPage()));
}
BENCHMARK(pageToToolkitPNG)->Unit(benchmark::kMillisecond);

void listOfSavedPages(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QString text = longPageText().left(4000);
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
