#include "figures/Measure.h"
#include "screens/HouseStyle.h"

#include <QApplication>

int main(int argc, char **argv) {
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);
    return takeMeasures(argc > 1 ? argv[1] : "");
}
