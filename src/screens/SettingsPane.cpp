#include "screens/SettingsPane.h"

using namespace Qt::StringLiterals;

QString nameOf(SettingsPane pane) {
    switch (pane) {
    case SettingsPane::appearance:
        return u"Appearance"_s;
    case SettingsPane::model:
        return u"Model"_s;
    case SettingsPane::data:
        return u"Data"_s;
    }
    Q_UNREACHABLE();
}

Icon iconOf(SettingsPane pane) {
    switch (pane) {
    case SettingsPane::appearance:
        return Icon::palette;
    case SettingsPane::model:
        return Icon::chip;
    case SettingsPane::data:
        return Icon::trash;
    }
    Q_UNREACHABLE();
}
