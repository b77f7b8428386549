#include "screens/SettingsPane.h"

using namespace Qt::StringLiterals;

QString nameOf(SettingsPane pane) {
    switch (pane) {
    case SettingsPane::appearance:
        return u"Appearance"_s;
    case SettingsPane::memory:
        return u"Memory"_s;
    case SettingsPane::search:
        return u"Web search"_s;
    case SettingsPane::schedules:
        return u"Scheduled runs"_s;
    case SettingsPane::model:
        return u"Model"_s;
    case SettingsPane::data:
        return u"Data"_s;
    case SettingsPane::about:
        return u"About"_s;
    }
    Q_UNREACHABLE();
}

Icon iconOf(SettingsPane pane) {
    switch (pane) {
    case SettingsPane::appearance:
        return Icon::palette;
    case SettingsPane::memory:
        return Icon::sparkles;
    case SettingsPane::search:
        return Icon::magnifier;
    case SettingsPane::schedules:
        return Icon::clock;
    case SettingsPane::model:
        return Icon::chip;
    case SettingsPane::data:
        return Icon::trash;
    case SettingsPane::about:
        return Icon::information;
    }
    Q_UNREACHABLE();
}
