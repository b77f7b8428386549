// Exports the long page once and prints the milliseconds of processor time that it took, from the page's text
// to the file's bytes.
//
//   bench_exporting pdf|png|toolkit-pdf|toolkit-png

#include "pages/paper/PageExport.h"
#include "screens/HouseStyle.h"
#include "screens/LongPage.h"

#include <QApplication>

#include <cstdio>
#include <ctime>

namespace {

QByteArray exported(const QByteArray &kind) {
    if (kind == "pdf")
        return exportPagePDF(longPage());
    if (kind == "png")
        return exportPagePNG(longPage());
    if (kind == "toolkit-pdf")
        return toolkitPDF(longPage());
    if (kind == "toolkit-png")
        return toolkitPNG(longPage());
    return {};
}

} // namespace

int main(int argc, char **argv) {
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);
    const std::clock_t before = std::clock();
    const QByteArray file = exported(argc > 1 ? argv[1] : "");
    const std::clock_t used = std::clock() - before;
    std::printf("%f\n", 1000.0 * static_cast<double>(used) / CLOCKS_PER_SEC);
    return file.isEmpty() ? 1 : 0;
}
