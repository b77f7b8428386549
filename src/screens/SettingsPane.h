#pragma once

#include "screens/Icon.h"

#include <QString>

#include <array>

/// The panes of the settings, in the order of their list.
enum class SettingsPane { appearance, model, data };

inline constexpr std::array settingsPanes = {SettingsPane::appearance, SettingsPane::model,
                                             SettingsPane::data};

QString nameOf(SettingsPane pane);
Icon iconOf(SettingsPane pane);
