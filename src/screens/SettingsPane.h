#pragma once

#include "screens/Icon.h"

#include <QString>

#include <array>

/// The panes of the settings, in the order of their list.
enum class SettingsPane { appearance, memory, search, schedules, model, data, about };

inline constexpr std::array settingsPanes = {
    SettingsPane::appearance, SettingsPane::memory, SettingsPane::search, SettingsPane::schedules,
    SettingsPane::model,      SettingsPane::data,   SettingsPane::about};

QString nameOf(SettingsPane pane);
Icon iconOf(SettingsPane pane);
