#include "screens/Placement.h"

#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

const QString windowGeometry = u"window/geometry"_s;
const QString sidebarWidth = u"sidebar/width"_s;

QSettings file() {
    return QSettings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                         u"/Ostrelin/windows.ini"_s,
                     QSettings::IniFormat);
}

} // namespace

QByteArray loadWindowGeometry() {
    return file().value(windowGeometry).toByteArray();
}

void saveWindowGeometry(const QByteArray &geometry) {
    file().setValue(windowGeometry, geometry);
}

std::optional<int> loadSidebarWidth() {
    bool isNumber = false;
    const int width = file().value(sidebarWidth).toInt(&isNumber);
    return isNumber ? std::optional(width) : std::nullopt;
}

void saveSidebarWidth(int width) {
    file().setValue(sidebarWidth, width);
}
