#include "figures/Measure.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    return takeMeasures(argc > 1 ? argv[1] : "");
}
