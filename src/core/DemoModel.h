#pragma once

#include "records/ModelTier.h"

#include <optional>

/// The small model that comes with the program, for a person who has no network yet.
struct DemoModel {
    QString path;
    std::optional<ModelTier> tier; ///< nothing if its description is missing
};

/// The demo model among the program's resources.
DemoModel demoModel(const QString &resourcesFolder);
