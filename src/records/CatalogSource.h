#pragma once

#include "platform/Task.h"
#include "records/ModelTier.h"

#include <optional>

/// The catalog that was delivered with the program: `catalog.json` in its folder of resources, or else
/// in the folder `Resources` inside that. A catalog of version 0 without tiers if there is none or it
/// doesn't decode.
Catalog loadBuiltInCatalog(const QString &resourcesFolder);

/// Where the catalog is served: the override `catalogURL` if there is one, else what this build was made
/// for.
QUrl catalogURL();

/// The catalog at that address, or where that leads to, with three seconds of patience; nothing unless it
/// comes with a status from 200 to 299, decodes, and has a tier. One tier whose sizes, context or file name
/// can't be is enough to distrust all of it. Throws Cancelled once `stop` is requested. Main thread.
Task<std::optional<Catalog>> fetchRemoteCatalog(QUrl url, std::stop_token stop);
