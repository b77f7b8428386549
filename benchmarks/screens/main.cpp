#include "figures/Measure.h"
#include "screens/FirstExport.h"
#include "screens/HouseStyle.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv) {
    const std::string filter = argc > 1 ? argv[1] : "";
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);
    const int status = takeMeasures(filter);
    try {
        measureFirstExports(filter);
        return status;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
