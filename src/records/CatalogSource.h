#pragma once

#include "records/ModelTier.h"

/// The catalog that was delivered with the program: `catalog.json` in its folder of resources, or else
/// in the folder `Resources` inside that. A catalog of version 0 without tiers if there is none or it
/// doesn't decode.
Catalog loadBuiltInCatalog(const QString &resourcesFolder);
