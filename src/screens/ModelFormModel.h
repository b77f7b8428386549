#pragma once

#include "records/ModelTier.h"
#include "records/Settings.h"

#include <QList>
#include <QString>

#include <optional>

/// What the settings tell of the model, and which others they offer. A plain value.
struct ModelFormModel {
    struct Installed {
        QString name;
        QString size;
        QString location; ///< of its folder
        QString current;  ///< name and size in a line

        bool operator==(const Installed &) const = default;
    };

    std::optional<Installed> installed;
    QList<ModelTier> smaller; ///< than the installed one; empty if that isn't in the catalog
    QList<ModelTier> larger;

    bool operator==(const ModelFormModel &) const = default;
};

/// `modelsFolder` is where models lie.
ModelFormModel modelFormModel(const Settings &settings, const Catalog &catalog, const QString &modelsFolder);
